#include "port_map.h"
#include "core/paths.h"
#include "core/textfile.h"

#include <QFile>

PortTarget resolvePort(int n, const QString &dataDir)
{
#ifdef Q_OS_WIN
    return {false, QStringLiteral("COM%1").arg(n)};
#else
    QFile f(paths::native(dataDir + QStringLiteral("comports.ini")));
    if (n >= 1 && f.open(QIODevice::ReadOnly)) {
        const QStringList lines = textfile::readLines(f);
        if (n <= lines.size()) {
            const QString dev = lines[n - 1].trimmed();
            if (dev.compare(QStringLiteral("sim"), Qt::CaseInsensitive) == 0)
                return {true, QStringLiteral("sim")};
            if (!dev.isEmpty())
                return {false, dev};
        }
    }
    return {false, QStringLiteral("/dev/ttyS%1").arg(n - 1)};
#endif
}
