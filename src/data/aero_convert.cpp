#include "aero_convert.h"
#include "core/numtext.h"

namespace aero {

namespace {
constexpr int kCarried = 39;
double frequencyOf(const QString &line) { return numtext::Val(line.left(8)); }
} // namespace

std::optional<QString> FullDetails::take(const QString &line)
{
    double value = frequencyOf(line);
    if (!inList_) {
        if (value <= 1000)
            return std::nullopt;
        inList_ = true;
        before_ = line;
        return line;
    }
    QString now = line;
    if (value < 1000) {
        if (now.size() > kCarried && before_.size() > kCarried) {
            now = before_.left(kCarried) + now.mid(kCarried);
            value = frequencyOf(now);
        }
    }
    before_ = now;
    if (value > 1000)
        return now;
    return std::nullopt;
}

std::optional<QString> NetworkOnly::take(const QString &line)
{
    if (numtext::Val(line) <= 2000)
        return std::nullopt;
    const QString key = line.left(8) + line.mid(16, 22);
    if (key == lastKey_)
        return std::nullopt;
    lastKey_ = key;
    return key.left(8) + QString(8, QLatin1Char(' ')) + key.mid(8);
}

QStringList fullDetails(const QStringList &lines)
{
    FullDetails f;
    QStringList out;
    for (const QString &l : lines)
        if (auto o = f.take(l))
            out << *o;
    return out;
}

QStringList networkOnly(const QStringList &lines)
{
    NetworkOnly n;
    QStringList out;
    for (const QString &l : lines)
        if (auto o = n.take(l))
            out << *o;
    return out;
}

} // namespace aero
