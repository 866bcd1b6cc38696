#include "sim_band.h"

#include <cmath>

SimBand::SimBand()
    : stations_{
          {198.0, 5, 16, 0, 0, 300, "Longwave Relay"},
          {603.0, 5, 12, 17 * 60, 6 * 60, 180, "Medium Wave Nord"},
          {999.0, 5, 10, 0, 0, 240, "Night Voice 999"},
          {3330.0, 3, 7, 0, 0, 120, "Time Signal Kilo"},
          {4625.0, 3, 6, 0, 0, 90, "Buzzer Station"},
          {5000.0, 3, 8, 0, 0, 150, "Standard Frequency 5"},
          {5975.0, 5, 13, 18 * 60, 23 * 60, 200, "Radio Tarnholm"},
          {6070.0, 5, 11, 0, 0, 160, "Castlehill Radio"},
          {7255.0, 5, 15, 4 * 60, 22 * 60, 220, "Voice of Orlina"},
          {7490.0, 5, 9, 0, 4 * 60, 130, "Evening Gospel Net"},
          {9410.0, 5, 17, 5 * 60, 23 * 60, 240, "World Service Brel"},
          {9420.0, 5, 8, 12 * 60, 18 * 60, 110, "Radio Hellas Vox"},
          {10000.0, 3, 9, 0, 0, 100, "Standard Frequency 10"},
          {11690.0, 5, 12, 6 * 60, 14 * 60, 180, "Radio Jordanel"},
          {13570.0, 5, 14, 14 * 60, 2 * 60, 260, "Pan Am Radio South"},
          {15400.0, 5, 10, 9 * 60, 17 * 60, 170, "Radio Kumasi Intl"},
          {17860.0, 5, 9, 10 * 60, 16 * 60, 150, "Deutschlandwelle SW"},
          {21500.0, 5, 7, 11 * 60, 15 * 60, 140, "Equator Radio"},
      }
{
}

namespace {
bool onAir(const SimStation &s, int minute)
{
    if (s.onMinute == s.offMinute)
        return true;
    if (s.onMinute < s.offMinute)
        return minute >= s.onMinute && minute < s.offMinute;
    return minute >= s.onMinute || minute < s.offMinute;
}

double heard(const SimStation &s, double khz, const QDateTime &utc, double bwKhz)
{
    const int minute = utc.time().hour() * 60 + utc.time().minute();
    if (!onAir(s, minute))
        return 0;
    const double off = std::fabs(khz - s.khz);
    const double reach = s.widthKhz / 2 + bwKhz / 2;
    if (off > reach * 2)
        return 0;
    // Full strength within the pass band, falling 6 dB (one S unit) per 100 Hz beyond it.
    double level = s.peakS;
    const double edge = std::max(0.0, off - bwKhz / 2);
    level -= edge * 10.0;
    const double t = double(utc.toSecsSinceEpoch() % 86400) + utc.time().msec() / 1000.0;
    level += 1.5 * std::sin(2 * M_PI * t / s.fadePeriodS + s.khz);
    return std::max(0.0, level);
}
} // namespace

double SimBand::sUnits(double khz, const QDateTime &utc, double bwKhz) const
{
    double best = 0.5; // band noise
    for (const auto &s : stations_)
        best = std::max(best, heard(s, khz, utc, bwKhz));
    return std::min(best, 21.0);
}

const SimStation *SimBand::stationAt(double khz, const QDateTime &utc, double bwKhz) const
{
    const SimStation *found = nullptr;
    double best = 0;
    for (const auto &s : stations_) {
        const double h = heard(s, khz, utc, bwKhz);
        if (h > best) {
            best = h;
            found = &s;
        }
    }
    return found;
}
