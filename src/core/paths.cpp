#include "paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace paths {

namespace {
bool isSeparator(QChar c) { return c == u'/' || c == u'\\'; }

QString decodeComponent(QStringView part)
{
    for (QChar c : part)
        if (c.unicode() > 0xff) // not settings text: a name already
            return part.toString();
    const QByteArray bytes = part.toLatin1();
    QStringDecoder decoder(QStringDecoder::System, QStringDecoder::Flag::Stateless);
    QString name = decoder.decode(bytes);
    return decoder.hasError() ? part.toString() : name;
}
} // namespace

QString fromSettingsText(const QString &text)
{
    // Separators are single bytes in every encoding we meet, so each component is decoded alone
    // and a name typed one way joins a folder typed the other.
    QString out;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i)
        if (i == text.size() || isSeparator(text[i])) {
            out += decodeComponent(QStringView(text).mid(start, i - start));
            if (i < text.size())
                out += text[i];
            start = i + 1;
        }
    return out;
}

QString toSettingsText(const QString &name) { return QString::fromLatin1(QFile::encodeName(name)); }

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
    return fromSettingsText(path);
#else
    QString p = fromSettingsText(path);
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
