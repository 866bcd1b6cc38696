#pragma once
#include <QString>

// Where COMn leads. On Windows it is the port name. Elsewhere: line n of "comports.ini" in the
// data directory, where the word "sim" selects the built-in simulator; without the file or the
// line, COMn is /dev/ttyS(n-1).
struct PortTarget {
    bool simulator = false;
    QString device;
};

PortTarget resolvePort(int n, const QString &dataDir);
