#include "scan_band.h"
#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/textfile.h"

#include <QStringList>
#include <climits>

namespace scanband {

double ScanBandStart = 0;
double ScanBandEnd = 0;
double ScanBandStep = 0;
double ScanBandFreq = 0;
int16_t ScanBandIndex = 0;
int16_t ScanBandLoop = 0;
bool ScanBandTuneMode = false;
Levels ScanBandLatest{};
double ScanBandPickFreq = 0;
double ScanBandHoverFreq = 0;
int16_t ScanBandLastCount = 0;

void resetState()
{
    ScanBandStart = ScanBandEnd = ScanBandStep = ScanBandFreq = 0;
    ScanBandIndex = ScanBandLoop = ScanBandLastCount = 0;
    ScanBandTuneMode = false;
    ScanBandLatest.fill(0);
    ScanBandPickFreq = ScanBandHoverFreq = 0;
}

const std::array<QString, 23> SLevelNames = {
    QStringLiteral("S0"),      QStringLiteral("S1"),      QStringLiteral("S2"),      QStringLiteral("S3"),
    QStringLiteral("S4"),      QStringLiteral("S5"),      QStringLiteral("S6"),      QStringLiteral("S7"),
    QStringLiteral("S8"),      QStringLiteral("S9"),      QStringLiteral("S9+6dB"),  QStringLiteral("S9+12dB"),
    QStringLiteral("S9+18dB"), QStringLiteral("S9+24dB"), QStringLiteral("S9+30dB"), QStringLiteral("S9+36dB"),
    QStringLiteral("S9=42dB"), QStringLiteral("S9+48dB"), QStringLiteral("S9+54dB"), QStringLiteral("S9+60dB"),
    QStringLiteral("S9+66dB"), QStringLiteral("S9+72dB"), QString()};

bool bandFits(double start, double end, double step, double lowerLimit, double upperLimit)
{
    return step > 0 && start >= lowerLimit && end > start && end <= upperLimit && (end - start) / step <= kLastIndex;
}

BandInput readInput(const QString &start, const QString &end, const QString &step, const QString &delay,
                    double lowerLimit, double upperLimit)
{
    BandInput in;
    in.startText = numtext::commaToPoint(start);
    in.endText = numtext::commaToPoint(end);
    in.start = numtext::Val(in.startText);
    in.end = numtext::Val(in.endText);
    in.step = numtext::valc(step);
    in.delay = numtext::valc(delay);
    if (in.step == 0)
        in.step = 0.001;
    const double ms = numtext::roundHalfEven(in.delay * 1000);
    const bool timerTakes = in.delay >= 0 && ms <= double(INT_MAX);
    in.intervalMs = timerTakes ? int(ms) : 0;
    in.valid = timerTakes && bandFits(in.start, in.end, in.step, lowerLimit, upperLimit);
    return in;
}

double lastStep(double start, double end, double step) { return numtext::floorInt((end - start) / step); }

float storeLevel(int showMode, int i, float v, Levels &latest, Levels &prev1, Levels &prev2)
{
    if (i < 0 || i > kLastIndex)
        throw RuntimeError::subscriptOutOfRange();
    const auto k = size_t(i);
    switch (showMode) {
    case 1:
        if (v > latest[k])
            latest[k] = v;
        return latest[k];
    case 2:
        prev2[k] = prev1[k];
        prev1[k] = latest[k];
        latest[k] = v;
        return (prev1[k] + latest[k] + prev2[k]) / 3;
    default:
        latest[k] = v;
        return v;
    }
}

int columnX(double freq, double start, double end)
{
    if (end == start)
        throw RuntimeError::divisionByZero();
    return numtext::clng((freq - start) * 500 / (end - start) + 70);
}

int levelY(double value) { return numtext::clng(360 - value * 8); }

int16_t nextIndex(int16_t index, double lastStep, int loop)
{
    int16_t i = numtext::cint(index + 1.0);
    if (i > lastStep && loop == 1)
        i = 0;
    return i;
}

bool mayContinue(double start, double end, double step, int index) { return (end - start) / step - 2 > index; }

bool inChart(double x, double y) { return x >= 70 && x < 570 && y >= 180 && y < 360; }

double frequencyAt(double x, double start, double end, double step)
{
    return numtext::floorInt((x - 70) / 500 * (end - start) / step) * step + start;
}

// --- SAN files ---

QByteArray sanBytes(const QString &dateText)
{
    if (ScanBandIndex > kLastIndex)
        throw RuntimeError::subscriptOutOfRange();
    QStringList lines{dateText, numtext::strBlank(ScanBandStart), numtext::strBlank(ScanBandEnd),
                      numtext::strBlank(ScanBandStep), numtext::strBlank(ScanBandIndex)};
    for (int i = 0; i <= ScanBandIndex; ++i) {
        // Single arithmetic, as the value is kept: 4.1 is written as 41.
        const float tenfold = ScanBandLatest[size_t(i)] * 10.0f;
        lines << numtext::format(numtext::floorInt(tenfold), QStringLiteral("000"));
    }
    return textfile::joinLines(lines);
}

namespace {
// Reads a file as its lines and items come: a whole line, or one item that ends at a comma or
// at the end of its line. Reading at the end of the file is run-time error 62.
class Reader {
public:
    explicit Reader(const QByteArray &b) : b_(b) {}

    QString line()
    {
        if (pos_ >= b_.size())
            throw RuntimeError::inputPastEnd();
        const qsizetype from = pos_;
        while (pos_ < b_.size() && b_[pos_] != '\r' && b_[pos_] != '\n')
            ++pos_;
        const QString s = QString::fromLatin1(b_.mid(from, pos_ - from));
        endOfLine();
        return s;
    }

    QString item()
    {
        while (pos_ < b_.size() && (b_[pos_] == ' ' || b_[pos_] == '\t'))
            ++pos_;
        if (pos_ >= b_.size())
            throw RuntimeError::inputPastEnd();
        QByteArray text;
        if (b_[pos_] == '"') {
            const qsizetype close = b_.indexOf('"', pos_ + 1);
            const qsizetype stop = close < 0 ? b_.size() : close;
            text = b_.mid(pos_ + 1, stop - pos_ - 1);
            pos_ = close < 0 ? b_.size() : close + 1;
            while (pos_ < b_.size() && b_[pos_] != ',' && b_[pos_] != '\r' && b_[pos_] != '\n')
                ++pos_;
        } else {
            const qsizetype from = pos_;
            while (pos_ < b_.size() && b_[pos_] != ',' && b_[pos_] != '\r' && b_[pos_] != '\n')
                ++pos_;
            text = b_.mid(from, pos_ - from);
        }
        if (pos_ < b_.size() && b_[pos_] == ',')
            ++pos_;
        else
            endOfLine();
        return QString::fromLatin1(text);
    }

private:
    void endOfLine()
    {
        if (pos_ < b_.size() && b_[pos_] == '\r')
            ++pos_;
        if (pos_ < b_.size() && b_[pos_] == '\n')
            ++pos_;
    }
    const QByteArray &b_;
    qsizetype pos_ = 0;
};
} // namespace

SanFile readSan(const QByteArray &bytes)
{
    Reader r(bytes);
    SanFile f;
    f.date = r.line();
    f.start = numtext::Val(r.line());
    f.end = numtext::Val(r.line());
    f.step = numtext::Val(r.line());
    f.lastCount = numtext::cint(numtext::Val(r.item()));
    for (int i = 0; i <= f.lastCount; ++i) {
        if (i > kLastIndex)
            throw RuntimeError::subscriptOutOfRange();
        f.values.push_back(float(numtext::Val(r.item()) / 10));
    }
    return f;
}

std::vector<Segment> overlaySegments(const SanFile &f)
{
    std::vector<Segment> out;
    int px = 70, py = 400;
    for (int i = 0; i < int(f.values.size()); ++i) {
        const double freq = i * f.step + f.start;
        const int x = columnX(freq, f.start, f.end);
        const int y = levelY(f.values[size_t(i)]);
        if (x >= 70 && x <= 570)
            out.push_back({px, py, x, y});
        px = x;
        py = y;
    }
    return out;
}

QString shownName(const QString &fileName)
{
    return fileName.size() > 8 ? fileName.mid(4, fileName.size() - 8) : fileName;
}

int overlayColor(int n)
{
    static constexpr int colors[] = {9, 10, 13, 12};
    return colors[(n - 1) & 3];
}

} // namespace scanband
