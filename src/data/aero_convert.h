#pragma once
// The Aero list turned into FTL lines, line by line, so that a window can pump and count
// between lines: all details ("aero.ftl"), or one line per network ("aero2.ftl").
#include <QString>
#include <QStringList>
#include <optional>

namespace aero {

// The line as it goes into "aero.ftl", or nothing. Lines up to 1000 kHz before the list are
// skipped; in the list a line below 1000 continues the one before (its first 39 columns taken
// from there when both are longer than 39) and a line of exactly 1000 is dropped.
class FullDetails {
public:
    std::optional<QString> take(const QString &line);

private:
    bool inList_ = false;
    QString before_;
};

// The line of a network for "aero2.ftl", or nothing: lines whose leading number is above 2000,
// keyed by columns 1-8 and 17-38; only the first of adjacent lines with one key.
class NetworkOnly {
public:
    std::optional<QString> take(const QString &line);

private:
    QString lastKey_;
};

// A whole list at once.
QStringList fullDetails(const QStringList &lines);
QStringList networkOnly(const QStringList &lines);

} // namespace aero
