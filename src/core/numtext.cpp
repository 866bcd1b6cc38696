#include "numtext.h"
#include "runtime_error.h"

#include <QList>
#include <cmath>
#include <limits>

namespace numtext {

namespace {
bool isBlank(QChar c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; }
}

double Val(const QString &s)
{
    // Collect the characters that can make up a number, skipping blanks anywhere.
    QString t;
    t.reserve(s.size());
    for (QChar c : s)
        if (!isBlank(c))
            t.append(c);
    int i = 0;
    const int n = int(t.size());
    if (n >= 2 && t[0] == u'&') {
        const QChar kind = t[1].toUpper();
        int base = kind == u'H' ? 16 : kind == u'O' ? 8 : 0;
        if (base == 0)
            return 0;
        qint64 v = 0;
        for (i = 2; i < n; ++i) {
            int d = -1;
            QChar c = t[i].toUpper();
            if (c >= u'0' && c <= u'9')
                d = c.unicode() - '0';
            else if (base == 16 && c >= u'A' && c <= u'F')
                d = c.unicode() - 'A' + 10;
            if (d < 0 || d >= base)
                break;
            v = v * base + d;
            if (v > 0xFFFFFFFFLL)
                break;
        }
        // 16-bit values read as signed, as the classic reader does
        if (v <= 0xFFFF && v > 0x7FFF)
            return double(v - 0x10000);
        if (v > 0x7FFFFFFF)
            return double(v - 0x100000000LL);
        return double(v);
    }
    QString num;
    if (i < n && (t[i] == u'+' || t[i] == u'-'))
        num.append(t[i++]);
    bool digits = false;
    while (i < n && t[i].isDigit() && t[i].unicode() < 128) {
        num.append(t[i++]);
        digits = true;
    }
    if (i < n && t[i] == u'.') {
        num.append(t[i++]);
        while (i < n && t[i].isDigit() && t[i].unicode() < 128) {
            num.append(t[i++]);
            digits = true;
        }
    }
    if (!digits)
        return 0;
    if (i < n && (t[i].toUpper() == u'E' || t[i].toUpper() == u'D')) {
        int j = i + 1;
        QString ex = QStringLiteral("e");
        if (j < n && (t[j] == u'+' || t[j] == u'-'))
            ex.append(t[j++]);
        bool expDigits = false;
        while (j < n && t[j].isDigit() && t[j].unicode() < 128) {
            ex.append(t[j++]);
            expDigits = true;
        }
        if (expDigits)
            num.append(ex);
    }
    bool ok = false;
    double v = num.toDouble(&ok);
    return ok ? v : 0;
}

QString commaToPoint(QString s)
{
    s.replace(u',', u'.');
    return s;
}

double floorInt(double x) { return std::floor(x); }

double roundHalfEven(double x) { return std::nearbyint(x); } // default FE_TONEAREST

double roundHalfAway(double x) { return std::round(x); }

int16_t cint(double x)
{
    double r = roundHalfEven(x);
    if (!(r >= -32768.0 && r <= 32767.0))
        throw RuntimeError::overflow();
    return int16_t(r);
}

int32_t clng(double x)
{
    double r = roundHalfEven(x);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        throw RuntimeError::overflow();
    return int32_t(r);
}

int32_t toInt(double x)
{
    const double t = std::trunc(x);
    if (!(t >= -2147483648.0 && t <= 2147483647.0))
        throw RuntimeError::overflow();
    return int32_t(t);
}

int16_t toInt16(double x)
{
    const double t = std::trunc(x);
    if (!(t >= -32768.0 && t <= 32767.0))
        throw RuntimeError::overflow();
    return int16_t(t);
}

QString format(double x, const QString &pattern)
{
    // Split the pattern: literal prefix, the digit part, literal suffix.
    int first = -1, last = -1;
    for (int i = 0; i < pattern.size(); ++i) {
        QChar c = pattern[i];
        if (c == u'0' || c == u'#' || c == u'.') {
            if (first < 0)
                first = i;
            last = i;
        }
    }
    if (first < 0)
        return pattern;
    const QString prefix = pattern.left(first);
    const QString suffix = pattern.mid(last + 1);
    const QString body = pattern.mid(first, last - first + 1);
    const int dot = int(body.indexOf(u'.'));
    const QString intPart = dot < 0 ? body : body.left(dot);
    const QString fracPart = dot < 0 ? QString() : body.mid(dot + 1);
    // Every place from the first "0" on is shown in the whole part, up to the last "0" in the fraction.
    const int firstZero = int(intPart.indexOf(u'0'));
    const int minInt = firstZero < 0 ? 0 : int(intPart.size()) - firstZero;
    const int decimals = int(fracPart.size());
    const int minFrac = int(fracPart.lastIndexOf(u'0')) + 1;

    // Round in decimal on 15 significant digits, so 1.005 formats as the user typed it.
    const bool negative = x < 0;
    QString ip, fp;
    bool allZero = true;
    {
        const QString e = QString::number(std::fabs(x), 'e', 14); // d.dddddddddddddde+XX
        const int ePos = int(e.indexOf(u'e'));
        QString mant = e.left(ePos);
        mant.remove(u'.');
        const int exp10 = e.mid(ePos + 1).toInt();
        // digits of the number: mant with the decimal point after (exp10 + 1) digits
        QList<int> d;
        for (QChar c : mant)
            d.append(c.unicode() - '0');
        int pointAt = exp10 + 1; // digits before the point
        while (pointAt <= 0) {
            d.prepend(0);
            ++pointAt;
        }
        while (int(d.size()) < pointAt + decimals + 1)
            d.append(0);
        const int keep = pointAt + decimals;
        const bool up = d[keep] >= 5;
        d.resize(keep);
        if (up) {
            int i = keep - 1;
            while (i >= 0) {
                if (++d[i] < 10)
                    break;
                d[i] = 0;
                --i;
            }
            if (i < 0) {
                d.prepend(1);
                ++pointAt;
            }
        }
        for (int i = 0; i < int(d.size()); ++i) {
            if (d[i] != 0)
                allZero = false;
            (i < pointAt ? ip : fp).append(QChar(u'0' + d[i]));
        }
        if (ip.isEmpty())
            ip = QStringLiteral("0");
    }
    // Integer part: drop leading zeros beyond what "0"s demand.
    while (ip.size() > 1 && ip[0] == u'0')
        ip.remove(0, 1);
    if (ip == u"0" && minInt == 0)
        ip.clear();
    while (ip.size() < minInt)
        ip.prepend(u'0');
    // Fraction part: trailing zeros beyond the "0"s of the pattern fall away.
    while (fp.size() > minFrac && fp.endsWith(u'0'))
        fp.chop(1);
    QString out = ip;
    if (dot >= 0 && (!fp.isEmpty() || decimals == 0))
        out += u'.' + fp;
    if (dot >= 0 && fp.isEmpty() && decimals > 0)
        out += u'.';
    if (negative && !allZero)
        out.prepend(u'-');
    return prefix + out + suffix;
}

QString formatText(const QString &s, const QString &pattern)
{
    const int places = int(pattern.count(u'@'));
    if (places == 0)
        return pattern;
    const QString text = s.rightJustified(places, u' ');
    const int extra = int(text.size()) - places;
    QString out;
    out.reserve(pattern.size() + extra);
    int next = 0; // the next character of text to place
    for (QChar c : pattern) {
        if (c != u'@') {
            out += c;
            continue;
        }
        if (next == 0) {
            out += text.left(extra);
            next = extra;
        }
        out += text[next++];
    }
    return out;
}

QString str(float x)
{
    QString s = QString::number(double(x), 'g', 7);
    if (s.contains(u'e'))
        s = s.toUpper();
    return s;
}

QString str(double x)
{
    QString s = QString::number(x, 'g', 15);
    if (s.contains(u'e'))
        s = s.toUpper();
    return s;
}

QString strBlank(double x)
{
    const QString s = str(x);
    return s.startsWith(u'-') ? s : u' ' + s;
}

} // namespace numtext
