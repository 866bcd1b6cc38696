#include "paths.h"

#include <QDir>
#include <QFileInfo>

namespace paths {

bool usesSlash()
{
#ifdef Q_OS_WIN
    return false;
#else
    return true;
#endif
}

QString native(const QString &path)
{
#ifdef Q_OS_WIN
    return path;
#else
    QString p = path;
    p.replace(u'\\', u'/');
    if (p.isEmpty())
        return p;
    const bool absolute = p.startsWith(u'/');
    const bool trailing = p.endsWith(u'/') && p.size() > 1;
    const QStringList parts = p.split(u'/', Qt::SkipEmptyParts);
    QString built = absolute ? QStringLiteral("/") : QString();
    bool exists = true;
    for (int i = 0; i < parts.size(); ++i) {
        QString part = parts[i];
        if (exists && part != u"." && part != u"..") {
            const QString dirName = built.isEmpty() ? QStringLiteral(".") : built;
            QFileInfo exact(dirName + u'/' + part);
            if (!exact.exists()) {
                QDir dir(dirName);
                const QStringList entries = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System
                                                          | QDir::NoDotAndDotDot);
                QString found;
                for (const QString &e : entries)
                    if (e.compare(part, Qt::CaseInsensitive) == 0) {
                        found = e;
                        break;
                    }
                if (found.isEmpty())
                    exists = false;
                else
                    part = found;
            }
        }
        if (!built.isEmpty() && !built.endsWith(u'/'))
            built += u'/';
        built += part;
    }
    if (trailing)
        built += u'/';
    return built;
#endif
}

} // namespace paths
