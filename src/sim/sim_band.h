#pragma once
// A simulated short-wave band: stations on frequencies with on-air hours and slow fading,
// so that S-meters, scans and charts see something real.
#include <QDateTime>
#include <QString>
#include <QVector>

struct SimStation {
    double khz;        // carrier
    double widthKhz;   // half-power width of its signal
    double peakS;      // strength in S units (9 = S9, 21 = S9+72 dB)
    int onMinute;      // UTC minute of day it starts (onMinute == offMinute: always on)
    int offMinute;
    double fadePeriodS; // seconds per fading cycle
    QString name;
};

class SimBand {
public:
    SimBand(); // the default band of invented stations
    explicit SimBand(QVector<SimStation> stations) : stations_(std::move(stations)) {}

    // Level in S units (0..21, fractional) heard at khz with a receiver bandwidth of bwKhz, at utc.
    double sUnits(double khz, const QDateTime &utc, double bwKhz = 6.0) const;
    // The station heard best at khz, or nullptr.
    const SimStation *stationAt(double khz, const QDateTime &utc, double bwKhz = 6.0) const;
    const QVector<SimStation> &stations() const { return stations_; }

private:
    QVector<SimStation> stations_;
};
