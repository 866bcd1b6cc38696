#pragma once
// The one road by which a frequency or a mode reaches the receiver, the open panel and every
// window that follows the tuned frequency. The start window holds it for the whole run.
#include "shared_state.h"

#include <QString>
#include <QVariant>
#include <array>
#include <functional>
#include <map>
#include <memory>

class RxDriver;
class CommLine;

// What the hub needs of the open panel: its change handlers and its frequency text.
class RxPanel {
public:
    virtual ~RxPanel() = default;
    virtual void hubFrequencyAChanged(double khz) = 0;
    virtual void hubModeChanged(int16_t v) = 0;
    virtual void hubBandwidthChanged(int16_t v) = 0;
    virtual void hubAgcspeedChanged(int16_t v) = 0;
    virtual QString frequencyText() const = 0;
};

// A list window that shows the tuned frequency in its own frequency box.
class FrequencyFollower {
public:
    virtual ~FrequencyFollower() = default;
    virtual void setFrequencyText(const QString &text) = 0;
};

class FrequencyHub {
public:
    FrequencyHub();
    ~FrequencyHub();

    // The start window's driver instances, one set at a time (index by rxType 1..4).
    void setDriver(int type, std::unique_ptr<RxDriver> d);
    void releaseDrivers();
    RxDriver *driver(int type) const;
    RxDriver *activeDriver() const { return driver(rxType); }

    void setPanel(RxPanel *p) { panel_ = p; }
    RxPanel *panel() const { return panel_; }

    // Windows that follow the frequency register here while they are open.
    void setFollower(Win w, FrequencyFollower *f);
    std::function<void(const QString &)> last20Add;   // frmLast20: put at the head of its list
    std::function<bool()> last20IgnoresSteps;          // frmLast20's "Ignore Freq steps"
    // Whether a step of the dial stays out of Last 20: false while no Last 20 window says so.
    bool stepsIgnored() const { return last20IgnoresSteps && last20IgnoresSteps(); }
    std::function<void()> searchTracking;              // frmTracking's SearchTracking

    void Change2FreqA(double &freq);
    void distributefreqa(const QString &text, double freq);
    QString ConvertRx2mfa();
    void SetRx2mfa(QString &letter);
    void Update4RxFreq();
    QVariant Update2RxFreq();
    // The receive event of the line: acted on only while dialActive.
    void Comm1_OnComm(CommLine &comm);
    void getfreq(QString &box, const QString &received);

    // The hidden buffer that collects what a receiver sends by itself.
    QString term;

private:
    std::array<std::unique_ptr<RxDriver>, 5> drivers_;
    RxPanel *panel_ = nullptr;
    std::map<Win, FrequencyFollower *> followers_;
};
