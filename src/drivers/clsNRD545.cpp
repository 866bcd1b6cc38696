#include "clsNRD545.h"
#include "core/numtext.h"
#include "core/session_clock.h"
#include "memory/mem_record.h"
#include "serial/comm_line.h"

#include <algorithm>
#include <cmath>

namespace {
// Cell sacrificed to status reads.
const QByteArray kStatusCell = "999";
constexpr int kStatusReplyLen = 21;
constexpr int kMemoryReplyLen = 21;
// Pauses around the store of the status cell.
constexpr int kStoreStepMs = 25;
constexpr int kStoreSettleMs = 50;

QByteArray field(const QString &rec, memfield::Field f) { return jrc::mid(rec, f.pos, f.len).toLatin1(); }

// The AGC code 1..9 from the set's three digits, which carry ten times the code.
int agcCodeOf(double tenfold) { return std::clamp<int>(numtext::cint(tenfold / 10.0), 1, 9); }
} // namespace

float nrd545SmeterCurve(double r)
{
    float x = r <= 83 ? float((r - 28) / 6.0) : float((r + 35) / 12.8);
    if (x < 0)
        x = 0;
    if (x > 19)
        x = 19;
    return x;
}

int16_t clsNRD545::readValue(const QByteArray &q, int bytes, int pos, int len)
{
    const QByteArray r = query(q, bytes, Wait::Blocking);
    return numtext::cint(jrc::valueAt(r, pos, len));
}

void clsNRD545::setRttyOnOff(int16_t v)
{
    framed("U23" + jrc::digits(v, 1));
    emit RttyonoffChanged(v);
}

int16_t clsNRD545::Bandwidthcontrol() { return readValue("W", 5, 2); }

int16_t clsNRD545::Bandwidthcontrolxxx()
{
    const QByteArray r = framedQuery("W", 5, Wait::Blocking);
    return numtext::cint(jrc::valueAt(r, 2));
}

void clsNRD545::setBandwidthcontrol(int16_t v)
{
    send("W" + jrc::digits(v, 3));
    emit BandwidthcontrolChanged(v);
}

void clsNRD545::Ecss(int16_t v)
{
    framed("CC" + jrc::digits(v, 1));
    emit EcssChanged(v);
}

int16_t clsNRD545::Agcspeed()
{
    const QByteArray r = query("NN", 6, Wait::Blocking);
    // The set answers "NN" and three digits, e.g. "NN050": the value starts after the echo.
    return int16_t(agcCodeOf(jrc::valueAt(r, 3)));
}

void clsNRD545::setAgcspeed(int16_t v)
{
    QByteArray c;
    if (v == 0)
        c = "G2";
    else if (v > 1)
        c = "NN" + jrc::digits(v * 10, 3);
    // Code 1 has no command: the frame carries a bare CR.
    framedOutput(c + '\r');
    emit AgcspeedChanged(v);
}

double clsNRD545::FrequencyA()
{
    const QByteArray r = framedQuery("F", 12, Wait::Blocking);
    return jrc::valueAt(r, 4) / 1000.0;
}

void clsNRD545::setFrequencyA(double khz)
{
    framed("F" + jrc::digits(khz * 1000.0, 10));
    emit FrequencyAChanged(khz);
}

void clsNRD545::FreqOrChan() { framed("MM21"); }

int16_t clsNRD545::PassBandShift() { return readValue("P", 6, 2); }

int16_t clsNRD545::PassBandShiftxxx()
{
    const QByteArray r = framedQuery("P", 6, Wait::Blocking);
    return numtext::cint(jrc::valueAt(r, 2));
}

void clsNRD545::setPassBandShift(int16_t v)
{
    send("P" + jrc::signedDigits(v, 3));
    emit PassbandshiftChanged(v);
}

int16_t clsNRD545::Ifgain() { return readValue("HH", 6, 3); }

void clsNRD545::setIfgain(int16_t v)
{
    framed("HH" + jrc::digits(v, 3));
    emit IfgainChanged(v);
}

int16_t clsNRD545::Squelch() { return readValue("LL", 6, 3); }

void clsNRD545::setSquelch(int16_t v)
{
    framed("LL" + jrc::digits(v, 3));
    emit SquelchChanged(v);
}

QString clsNRD545::RxStatus()
{
    QString result;
    remoteCommand = 1;
    i_on();
    // The store runs in channel operation; the second switch brings the set back.
    send("MM21");
    delayMs(kStoreStepMs);
    send("J1" + kStatusCell);
    delayMs(kStoreStepMs);
    send("MM21");
    comm().setInBufferCount(0);
    delayMs(kStoreSettleMs);
    send("L" + kStatusCell + kStatusCell);
    waitForCount(kStatusReplyLen, Wait::LetEventsRun);
    const QByteArray r = comm().Input();
    remoteCommand = 0;
    i_off();
    const QString a = QString::number(std::floor(jrc::valueAt(r, 18, 3) / 10.0)).right(1);
    result = QStringLiteral("X") + jrc::mid(r, 5, 3) + jrc::mid(r, 10, 8) + a;
    return result;
}

void clsNRD545::setRxStatus(const QString &s)
{
    // Taken by position: attenuator, bandwidth, mode, Hz, AGC code.
    framed("S" + kStatusCell + jrc::mid(s, 2, 3).toLatin1() + "00" + jrc::mid(s, 5, 8).toLatin1()
           + jrc::digits(numtext::Val(jrc::mid(s, 13, 1)) * 10, 3));
    emit RxStatusChanged(s);
}

int16_t clsNRD545::Tone() { return readValue("KK", 6, 3); }

void clsNRD545::setTone(int16_t v)
{
    framed("KK" + jrc::digits(v, 3));
    emit ToneChanged(v);
}

int16_t clsNRD545::Volume() { return readValue("JJ", 6, 3); }

void clsNRD545::setVolume(int16_t v)
{
    framed("JJ" + jrc::digits(v, 3));
    emit VolumeChanged(v);
}

float clsNRD545::Smeter()
{
    const QByteArray r = query("M", 5, Wait::Blocking);
    return nrd545SmeterCurve(jrc::valueAt(r, 2, 3));
}

QString clsNRD545::Memory(int16_t n)
{
    const QByteArray r = memoryReply(n, kMemoryReplyLen);
    if (jrc::mid(r, 5, 1) == QStringLiteral("V"))
        return jrc::vacantRecord(jrc::mid(r, 2, 3));
    const QString agc = QString::number(agcCodeOf(jrc::valueAt(r, 18, 3))).right(1);
    return QStringLiteral("MEM") + jrc::mid(r, 2, 3) + u' ' + jrc::mid(r, 10, 8) + u' ' + jrc::mid(r, 7, 1)
        + QStringLiteral(" 0") + jrc::mid(r, 6, 1) + u' ' + jrc::mid(r, 5, 1) + u' ' + agc
        + QStringLiteral(" @@@ @@@ @ ");
}

void clsNRD545::setMemory(int16_t n, const QString &record)
{
    const QByteArray agc = jrc::digits(numtext::Val(jrc::mid(record, memfield::agc.pos, 1)) * 10, 3);
    const double hz = numtext::Val(jrc::mid(record, memfield::frequency.pos, memfield::frequency.len));
    QByteArray c;
    // The set has no erase: a record without a valid frequency leaves the cell as it was.
    if (hz > jrc::kMemLowestHz && hz < jrc::kMemHighestHz)
        c = "K" + jrc::digits(n, 3) + field(record, memfield::attenuator)
            + jrc::mid(record, memfield::bandwidth.pos + 1, 1).toLatin1() + field(record, memfield::mode) + "00"
            + field(record, memfield::frequency) + agc;
    framedOutput(c + '\r');
}

void clsNRD545::setRxClock(const QString &hhmmss)
{
    framed("R1" + (jrc::mid(hhmmss, 1, 2) + jrc::mid(hhmmss, 4, 2)).toLatin1());
}

void clsNRD545::RttyParameters(const QString &p) { framed("U15" + p.toLatin1()); }

void clsNRD545::nrbc(const QVariant &index, const QVariant &value)
{
    const double i = index.typeId() == QMetaType::QString ? numtext::Val(index.toString()) : index.toDouble();
    QByteArray c;
    if (i == 0)
        c = "BB" + jrc::variantText(value).right(1).toLatin1();
    else if (i == 1)
        c = "U29" + jrc::variantDigits(value, 3);
    else if (i == 2)
        c = "U30" + jrc::variantDigits(value, 3);
    framed(c);
}

int16_t clsNRD545::nb(int16_t index)
{
    if (index == 0)
        return numtext::cint(jrc::valueAt(framedQuery("N", 3, Wait::LetEventsRun), 2, 1));
    if (index == 1)
        return numtext::cint(jrc::valueAt(framedQuery("FF", 6, Wait::LetEventsRun), 3, 3));
    return 0;
}

void clsNRD545::setNb(int16_t index, int16_t value)
{
    QByteArray c;
    if (index == 0)
        c = "N" + jrc::lastChar(value);
    else if (index == 1)
        c = "FF" + jrc::digits(value, 3);
    framed(c);
}

int16_t clsNRD545::nt(int16_t index)
{
    if (index == 1)
        return numtext::cint(jrc::valueAt(framedQuery("GG", 8, Wait::LetEventsRun), 3, 5));
    return 0;
}

void clsNRD545::setNt(int16_t index, int16_t value)
{
    QByteArray c;
    if (index == 0)
        c = "EE" + jrc::lastChar(value);
    else if (index == 1)
        c = "GG" + jrc::signedDigits(value, 4);
    framed(c);
}

int16_t clsNRD545::Userdefs(int16_t) const { return 0; }

QByteArray clsNRD545::userdefCommand(int16_t index, int16_t value)
{
    // The settings chosen from a list: index and the highest value the set knows.
    struct Choice { int index; int highest; };
    static constexpr Choice choices[] = {{1, 1},  {2, 1},  {3, 3},  {4, 1},  {8, 2},  {9, 2},
                                         {10, 1}, {11, 1}, {12, 1}, {13, 2}, {18, 1}, {19, 1},
                                         {24, 1}, {25, 1}, {26, 1}, {27, 1}, {28, 1}, {31, 1},
                                         {32, 1}};
    switch (index) {
    case 14: return "U2" + jrc::signedDigits(value, 4); // CW BFO pitch, Hz
    case 20: return "U20" + jrc::digits(value, 2);      // scan time, tenths of a second
    case 21: return "U21" + jrc::digits(value, 3);      // sweep time, hundredths
    case 22: return "U22" + jrc::digits(value, 3);      // auto stop time, tenths
    default: break;
    }
    for (const Choice &c : choices)
        if (c.index == index)
            return value >= 0 && value <= c.highest ? "U" + jrc::digits(index, 2) + QByteArray::number(value)
                                                    : QByteArray();
    return QByteArray();
}

void clsNRD545::setUserdefs(int16_t index, int16_t value)
{
    framed(userdefCommand(index, value));
}
