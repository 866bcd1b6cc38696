#include "setup_checks.h"
#include "core/numtext.h"
#include "core/paths.h"
#include "core/shared_state.h"

#include <QDir>

namespace setup {
namespace {

const QString kDefault = QStringLiteral("Default");

// A number box: where its value lives, the range that passes, and what a failure says.
struct NumberRule {
    float *slot;
    double low;
    double high;
    bool highIncluded;
    QString defaultText;
    QString message;
    bool focusBack;
};

NumberRule numberRule(Box box, int i)
{
    const QString dimMessage = QStringLiteral("Range is between\n1 and 30 (x 1000)");
    const QString levelMessage = QStringLiteral("Level setting should\nbe between 0 and 99");
    switch (box) {
    case Box::Dimbdxc: return {&slotDimBdxc(), 1, 50, false, QStringLiteral("2"), dimMessage, true};
    case Box::Dimown: return {&slotDimOwn(), 1, 50, false, QStringLiteral("1"), dimMessage, true};
    case Box::Dimlog: return {&slotDimLog(), 1, 50, false, QStringLiteral("1"), dimMessage, true};
    case Box::Dimilg: return {&slotDimIlg(), 1, 50, false, QStringLiteral("15"), dimMessage, true};
    case Box::ARoptions:
        Q_ASSERT(i >= 0 && i <= 3);
        return {&slotArOption(i), 1, 6, true, QStringLiteral("1"),
                QStringLiteral("Filter number should be\nwithin the range 1 to 6"), false};
    case Box::Agctc: {
        Q_ASSERT(i >= 0 && i <= 2);
        static const char *defaults[] = {"1", "3", "9"};
        return {&slotAgctc(i), 1, 9, true, QString::fromLatin1(defaults[i]),
                QStringLiteral("AGC time constant factor\nshould be between 1 and 9"), false};
    }
    case Box::Nrbc: {
        Q_ASSERT(i >= 0 && i <= 1);
        static const char *defaults[] = {"50", "20"};
        return {&slotNrbc(i), 0, 255, true, QString::fromLatin1(defaults[i]),
                QStringLiteral("Noise reduction or Beat Canceller effect\nshould be between 0 and 255"), false};
    }
    case Box::Freqcorr:
        Q_ASSERT(i >= 0 && i <= 1);
        return {&slotFreqcorr(i), -1000, 1000, true, QStringLiteral("0"),
                QStringLiteral("Frequency error correction\nshould be within the range\n+ 1000 to - 1000 Hz"), true};
    case Box::LevelL: return {&slotLevelL(), 0, 99, true, QStringLiteral("0"), levelMessage, true};
    case Box::LevelR: return {&slotLevelR(), 0, 99, true, QStringLiteral("0"), levelMessage, true};
    case Box::Level: return {&slotLevel(), 0, 99, true, QStringLiteral("0"), levelMessage, true};
    default: break;
    }
    Q_UNREACHABLE();
}

Verdict failed(const QString &defaultText, const QString &message, const QString &title, bool focusBack)
{
    return {false, defaultText, message, title, focusBack};
}

Verdict passed(const QString &text) { return {true, text, {}, {}, false}; }

bool isSeparator(QChar c) { return c == u'\\' || c == u'/'; }

Verdict leaveDirpath(const QString &text, PathStyle style, const QString &home)
{
    QString p = text;
    bool ok;
    if (style == PathStyle::Backslash) {
        if (!p.endsWith(u'\\'))
            p += u'\\';
        ok = p.size() >= 2 && p[1] == u':';
    } else {
        // A "\" is read as "/" on these systems, so either ends the path.
        if (p.isEmpty() || !isSeparator(p.back()))
            p += u'/';
        // The bare root is never a data directory, and an emptied box must not turn into it.
        ok = p.size() >= 2 && isSeparator(p.front());
    }
    dirPath = p;
    if (ok)
        return passed(p);
    const QString def = defaultDirPath(style, home);
    return failed(def, QStringLiteral("Invalid path\nExample ") + def, kDefault, true);
}

Verdict leaveCoordinate(const QString &text, bool latitude)
{
    (latitude ? rxLatitude : rxLongitude) = text;
    const double n = numtext::Val(text);
    const QChar last = text.isEmpty() ? QChar() : text.back();
    bool ok;
    if (latitude)
        ok = n > 0 && n < 9000 && (last == u'S' || last == u'N') && text.size() == 5;
    else
        ok = n > 0 && n < 18000 && (last == u'W' || last == u'E') && (text.size() == 5 || text.size() == 6);
    if (ok)
        return passed(text);
    if (latitude)
        return failed(QStringLiteral("5205N"), QStringLiteral("Invalid Latitude\nExample: 5205N"), kDefault, true);
    return failed(QStringLiteral("0445E"), QStringLiteral("Invalid Longitude\nExample: 0445E"), kDefault, true);
}

Verdict leaveLt2utc(const QString &text)
{
    const QString message = QStringLiteral("Range is between\n+13 and -13 h");
    double n = numtext::Val(text);
    if (n != numtext::floorInt(n))
        n = numtext::floorInt(n) + 0.5; // any fraction is a half hour
    slotLt2Utc() = float(n);
    if (n > 13 || n < -13 || text.isEmpty())
        return failed(QStringLiteral("0"), message, QStringLiteral("Default 1"), true);
    for (int k = 0; k < text.size(); ++k) {
        const char16_t c = text[k].unicode();
        const bool allowed = (c == u' ' && k == 0) || c == u'+' || c == u'-' || c == u'.' || (c >= 48 && c <= 58);
        if (!allowed)
            return failed(QStringLiteral("0"), message, QStringLiteral("Default 2"), true);
    }
    return passed(text);
}

Verdict leaveNumber(Box box, int index, const QString &text)
{
    const NumberRule r = numberRule(box, index);
    const double n = numtext::Val(text);
    *r.slot = float(n);
    const bool ok = n >= r.low && (r.highIncluded ? n <= r.high : n < r.high);
    if (ok)
        return passed(text);
    return failed(r.defaultText, r.message, kDefault, r.focusBack);
}

} // namespace

PathStyle hostPathStyle() { return paths::usesSlash() ? PathStyle::Slash : PathStyle::Backslash; }

QString defaultDirPath(PathStyle style, const QString &home)
{
    if (style == PathStyle::Backslash)
        return QStringLiteral("C:\\Dorvane\\");
    QString h = home;
    while (h.endsWith(u'/'))
        h.chop(1);
    return h + QStringLiteral("/brelvox/");
}

Verdict leaveBox(Box box, int index, const QString &text, PathStyle style, const QString &home)
{
    switch (box) {
    case Box::Dirpath: return leaveDirpath(text, style, home);
    case Box::Rxlatitude: return leaveCoordinate(text, true);
    case Box::Rxlongitude: return leaveCoordinate(text, false);
    case Box::Lt2utc: return leaveLt2utc(text);
    default: return leaveNumber(box, index, text);
    }
}

Verdict leaveBox(Box box, int index, const QString &text)
{
    return leaveBox(box, index, text, hostPathStyle(), QDir::homePath());
}

QString boxText(Box box, int index)
{
    switch (box) {
    case Box::Dirpath: return dirPath;
    case Box::Rxlatitude: return rxLatitude;
    case Box::Rxlongitude: return rxLongitude;
    case Box::Lt2utc: return numtext::str(slotLt2Utc());
    case Box::LevelL:
    case Box::LevelR:
    case Box::Level: return numtext::format(*numberRule(box, index).slot, QStringLiteral("00"));
    default: return numtext::str(*numberRule(box, index).slot);
    }
}

} // namespace setup
