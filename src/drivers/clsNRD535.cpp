#include "clsNRD535.h"
#include "core/numtext.h"
#include "core/session_clock.h"
#include "memory/mem_record.h"
#include "serial/comm_line.h"

namespace {
// Cell sacrificed to status reads.
const QByteArray kStatusCell = "199";
constexpr int kStatusReplyLen = 17;
constexpr int kMemoryReplyLen = 16; // the reply's characters before its CR
// Bandwidth control and pass band shift are followed by this pause.
constexpr int kControlPauseMs = 50;

QByteArray field(const QString &rec, memfield::Field f) { return jrc::mid(rec, f.pos, f.len).toLatin1(); }
} // namespace

float nrd535SmeterCurve(double r)
{
    float x = float((137.0 - r) * 0.25);
    // The meter is not linear: the line is bent at 13 and at 6.
    if (x > 13)
        x = float(x + (x - 13.0) * 0.34);
    if (x < 6)
        x = float(x + (6.0 - x) * 0.44);
    if (x < 0)
        x = 0;
    if (x > 18)
        x = 18;
    return x;
}

void clsNRD535::setRttyOnOff(int16_t v)
{
    framed("X" + jrc::digits(v, 1));
    emit RttyonoffChanged(v);
}

int16_t clsNRD535::Bandwidth() { return numtext::cint(numtext::Val(jrc::mid(RxStatus(), 3, 1))); }

int16_t clsNRD535::Agcspeed() { return numtext::cint(numtext::Val(jrc::mid(RxStatus(), 13, 1))); }

void clsNRD535::setAgcspeed(int16_t v)
{
    framed("G" + jrc::lastChar(v));
    emit AgcspeedChanged(v);
}

void clsNRD535::setNoiseblanker(int16_t v)
{
    framed("N" + jrc::lastChar(v));
    emit NoiseblankerChanged(v);
}

void clsNRD535::setBandwidthcontrol(int16_t v)
{
    send("W" + jrc::digits(v, 4));
    delayMs(kControlPauseMs);
    emit BandwidthcontrolChanged(v);
}

void clsNRD535::setPassBandShift(int16_t v)
{
    send("P" + jrc::signedDigits(v, 4));
    delayMs(kControlPauseMs);
    emit PassbandshiftChanged(v);
}

double clsNRD535::FrequencyA() { return numtext::Val(jrc::mid(RxStatus(), 5, 8)) / 1000.0; }

void clsNRD535::setFrequencyA(double khz)
{
    framed("F" + jrc::digits(khz * 1000.0, 8));
    emit FrequencyAChanged(khz);
}

QString clsNRD535::RxStatus()
{
    QString result;
    remoteCommand = 1;
    i_on();
    send("J1" + kStatusCell);
    delayMs(kControlPauseMs);
    comm().setInBufferCount(0);
    send("L" + kStatusCell + kStatusCell);
    waitForCount(kStatusReplyLen, Wait::LetEventsRun);
    const QByteArray r = comm().Input();
    remoteCommand = 0;
    i_off();
    result = QStringLiteral("X") + jrc::mid(r, 5, 12);
    return result;
}

void clsNRD535::setRxStatus(const QString &s)
{
    framed("S" + kStatusCell + s.right(12).toLatin1());
    emit RxStatusChanged(s);
}

float clsNRD535::Smeter()
{
    const QByteArray r = query("M", 4, Wait::Blocking);
    // A read cut short by a line that has gone reads as a silent band, not as a full-scale one.
    if (r.size() < 4)
        return 0;
    return nrd535SmeterCurve(jrc::valueAt(r, 2, 3));
}

QString clsNRD535::Memory(int16_t n)
{
    const QByteArray r = memoryReply(n, kMemoryReplyLen);
    if (jrc::mid(r, 5, 1) == QStringLiteral("V"))
        return jrc::vacantRecord(jrc::mid(r, 2, 3));
    return QStringLiteral("MEM") + jrc::mid(r, 2, 3) + u' ' + jrc::mid(r, 8, 8) + u' ' + jrc::mid(r, 7, 1)
        + QStringLiteral(" 0") + jrc::mid(r, 6, 1) + u' ' + jrc::mid(r, 5, 1) + u' ' + jrc::mid(r, 16, 1)
        + QStringLiteral(" @@@ @@@ @ ");
}

void clsNRD535::setMemory(int16_t n, const QString &record)
{
    const double hz = numtext::Val(jrc::mid(record, memfield::frequency.pos, memfield::frequency.len));
    QByteArray c;
    if (hz > jrc::kMemLowestHz && hz < jrc::kMemHighestHz) {
        // attenuator, bandwidth (its second digit), mode, Hz, AGC
        c = "K" + jrc::digits(n, 3) + field(record, memfield::attenuator)
            + jrc::mid(record, memfield::bandwidth.pos + 1, 1).toLatin1() + field(record, memfield::mode)
            + field(record, memfield::frequency) + field(record, memfield::agc);
    } else {
        c = "U5" + jrc::digits(n, 3); // empties the cell
    }
    framed(c);
}

void clsNRD535::setRxClock(const QString &hhmmss)
{
    framed("R1" + (jrc::mid(hhmmss, 1, 2) + jrc::mid(hhmmss, 4, 2) + jrc::mid(hhmmss, 7, 2)).toLatin1());
}

void clsNRD535::RttyParameters(const QString &p) { framed("U3" + p.toLatin1()); }

int16_t clsNRD535::Userdefs(int16_t) const { return 0; }

QByteArray clsNRD535::userdefCommand(int16_t index, int16_t value)
{
    switch (index) {
    case 0: // relay mode: normally off, normally on, squelch
        return value >= 0 && value <= 2 ? "U0" + QByteArray::number(value) : QByteArray();
    case 1: // VBT bypass, inverted on the wire: 0 is bypass off
        return value == 0 ? QByteArray("U11") : value == 1 ? QByteArray("U10") : QByteArray();
    case 2: // CW BFO pitch, Hz
        return "U2" + jrc::signedDigits(value, 4);
    case 4: // S-meter display
    case 6: // SSB frequency display
    case 7: // 10 Hz digit
    case 8: // clock colon blinking
    case 9: // beep on key press
        return value == 0 || value == 1 ? "U" + QByteArray::number(index) + QByteArray::number(value) : QByteArray();
    default:
        return QByteArray();
    }
}

void clsNRD535::setUserdefs(int16_t index, int16_t value)
{
    framed(userdefCommand(index, value));
}
