#include "clsRX320.h"
#include "core/numtext.h"
#include "core/runtime_error.h"
#include "core/session_clock.h"
#include "core/shared_state.h"
#include "serial/comm_line.h"

#include <cmath>

namespace {
uint8_t byteOf(double v)
{
    // A character code below 0 was never a byte: the classic invalid-call error.
    if (v < 0)
        throw RuntimeError::invalidCall();
    const double r = numtext::roundHalfEven(v);
    return uint8_t(std::min(255.0, r));
}

QByteArray cmd(char letter, const QByteArray &operands)
{
    QByteArray b(1, letter);
    b += operands;
    b += '\r';
    return b;
}
} // namespace

Rx320Tuning rx320Tuning(double khz)
{
    Rx320Tuning t;
    const double F = khz * 1000.0;
    const double c0 = slotFreqcorr(0), c1 = slotFreqcorr(1);
    const double C = std::floor(c0 + (c1 - c0) * (F - 5000000.0) / 10000000.0);
    double S = 0, T = 0;
    bool tuned = true;
    switch (rx320Mode) {
    case 0:
    case 3:
        S = rx320Pbs;
        T = C + F - 1250 - S;
        break;
    case 1:
    case 2: {
        if (rx320Bandwidth < 0 || rx320Bandwidth >= filterTable.size())
            throw RuntimeError::subscriptOutOfRange();
        const double W = numtext::Val(filterTable[rx320Bandwidth]);
        S = W / 2 + 200 + rx320Pbs;
        T = rx320Mode == 1 ? C + F - 1250 + S : C + F - 1250 - S;
        break;
    }
    default:
        tuned = false;
    }
    if (!tuned)
        return t; // all zeros
    t.coarse = numtext::toInt(std::floor(T / 2500) + 18000);
    const int32_t whole = numtext::clng(T);
    const int32_t R = whole % 2500;
    t.fine = R * 5.46;
    t.bfo = numtext::toInt(std::floor((rx320Mode == 3 ? rx320Bfo + S + 8000 : S + 8000) * 2.73));

    const double coarseHi = std::floor(t.coarse / 256.0);
    const double fineHi = std::floor(t.fine / 256.0);
    const double bfoHi = std::floor(t.bfo / 256.0);
    t.bytes = {byteOf(coarseHi), byteOf(t.coarse - coarseHi * 256), byteOf(fineHi),
               byteOf(t.fine - fineHi * 256), byteOf(bfoHi), byteOf(t.bfo - bfoHi * 256)};
    return t;
}

uint8_t rx320LevelByte(int16_t v)
{
    const int32_t product = int32_t(v) * 99;
    if (product > 32767 || product < -32768)
        throw RuntimeError::overflow();
    if (product < 0)
        throw RuntimeError::invalidCall(); // square root of a negative
    double L = numtext::roundHalfEven((99 - std::sqrt(double(product))) * 63 / 99);
    L = std::clamp(L, 0.0, 63.0);
    return uint8_t(L);
}

QString clsRX320::Firmware()
{
    comm().setInputLen(0);
    comm().Output("?\r");
    delayMs(100);
    return QString::fromLatin1(comm().Input());
}

void clsRX320::setBandwidth(int16_t &v)
{
    rx320Bandwidth = v;
    if (v < 0 || v > 33)
        v = 33;
    comm().Output(cmd('W', QByteArray(1, char(uint8_t(v)))));
    setFrequencyA(rx320Freq);
    emit BandwidthChanged(v);
}

void clsRX320::setMode(int16_t v)
{
    rx320Mode = v;
    comm().Output(cmd('M', QByteArray::number(v)));
    setFrequencyA(rx320Freq);
    emit ModeChanged(v);
}

void clsRX320::setAgcspeed(int16_t v)
{
    rx320Agc = v;
    comm().Output(cmd('G', QByteArray::number(v)));
    emit AgcspeedChanged(v);
}

void clsRX320::setPassBandShift(int16_t v)
{
    rx320Pbs = v;
    setFrequencyA(rx320Freq);
    emit PassbandshiftChanged(v);
}

void clsRX320::setBeatfreqosc(int16_t v)
{
    rx320Bfo = v;
    setFrequencyA(rx320Freq);
    emit BeatfreqoscChanged(v);
}

void clsRX320::setFrequencyA(double khz)
{
    rx320Freq = khz;
    const Rx320Tuning t = rx320Tuning(rx320Freq);
    comm().Output(cmd('N', QByteArray(reinterpret_cast<const char *>(t.bytes.data()), 6)));
    emit FrequencyAChanged(khz);
}

void clsRX320::setVolume(int16_t v)
{
    rx320Volume = v;
    const uint8_t L = rx320LevelByte(v);
    comm().Output(cmd('V', QByteArray{"\x7f"} + char(L)));
    emit VolumeChanged(v);
}

void clsRX320::setLinelevel(int16_t v)
{
    rx320Line = v;
    const uint8_t L = rx320LevelByte(v);
    comm().Output(cmd('A', QByteArray{"\x7f"} + char(L)));
    emit LinelevelChanged(v);
}

float clsRX320::Smeter()
{
    comm().setInBufferCount(0);
    comm().Output("X\r");
    // No time-out and no message pumping: the receiver always answers. Only a line whose waits
    // are cut (the device is gone, the window is closing) ends the wait short.
    while (comm().InBufferCount() < 4 && !comm().waitsCut())
        comm().waitForBytes(1000);
    const QByteArray r = comm().Input();
    // A reply cut short reads as no signal: the recorders draw it as a silent band and go on,
    // where the arithmetic below would stop them with a run-time error over bytes never sent.
    if (r.size() < 4)
        return 0.0f;
    const int hi = uint8_t(r[1]), lo = uint8_t(r[2]);
    if (hi >= 128)
        throw RuntimeError::overflow();
    const int V = 256 * hi + lo;
    if (V == 0)
        throw RuntimeError::invalidCall();
    float s = float(1.4 * std::log(double(V)));
    return s < 0 ? 0.0f : s;
}
