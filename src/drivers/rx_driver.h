#pragma once
// What every receiver driver has in common: properties that turn into serial traffic on the
// shared line, and a <Property>Changed event raised as the last act of every write.
// A driver holds no state of its own: what must be remembered lies in the shared block.
#include <QObject>
#include <QString>
#include <cstdint>

class CommLine;

class RxDriver : public QObject {
    Q_OBJECT
public:
    explicit RxDriver(CommLine &comm, QObject *parent = nullptr) : QObject(parent), comm_(comm) {}
    ~RxDriver() override = default;

    CommLine &comm() const { return comm_; }

    // The properties the hub uses on every model. A model that cannot report a setting
    // answers 0 for it.
    virtual void setFrequencyA(double khz) = 0;
    virtual double FrequencyA() { return 0; }
    virtual void setMode(int16_t v) = 0;
    virtual int16_t Mode() { return 0; }
    // The argument is by reference: a model may correct the caller's value.
    virtual void setBandwidth(int16_t &v) = 0;
    virtual void setAgcspeed(int16_t v) = 0;
    virtual float Smeter() = 0;
    virtual QString Firmware() = 0;

signals:
    void FrequencyAChanged(double khz);
    void BandwidthChanged(int v);
    void ModeChanged(int v);
    void AgcspeedChanged(int v);
    void VolumeChanged(int v);
    void LinelevelChanged(int v);
    void PassbandshiftChanged(int v);
    void BeatfreqoscChanged(int v);

private:
    CommLine &comm_;
};
