#include "hub.h"
#include "numtext.h"
#include "drivers/rx_driver.h"
#include "serial/comm_line.h"
#include "ui/facades.h"

FrequencyHub::FrequencyHub() = default;
FrequencyHub::~FrequencyHub() = default;

void FrequencyHub::setDriver(int type, std::unique_ptr<RxDriver> d)
{
    if (type >= 1 && type <= 4)
        drivers_[size_t(type)] = std::move(d);
}

void FrequencyHub::releaseDrivers()
{
    for (auto &d : drivers_)
        d.reset();
}

RxDriver *FrequencyHub::driver(int type) const
{
    return type >= 1 && type <= 4 ? drivers_[size_t(type)].get() : nullptr;
}

void FrequencyHub::setFollower(Win w, FrequencyFollower *f)
{
    if (f)
        followers_[w] = f;
    else
        followers_.erase(w);
}

void FrequencyHub::Change2FreqA(double &freq)
{
    if (rxType < 1 || rxType > 4)
        return;
    if (freqLowerLimit <= freq && freq <= freqUpperLimit) {
        if (RxDriver *d = activeDriver())
            d->setFrequencyA(freq);
        if (panel_)
            panel_->hubFrequencyAChanged(freq);
    } else {
        ui::MsgBox(QStringLiteral("Frequency outside range"), ui::vbExclamation, QStringLiteral("Input Error"));
    }
}

void FrequencyHub::distributefreqa(const QString &text, double freq)
{
    static const Win order[] = {Win::frmBdxc, Win::frmOwn, Win::frm320Files, Win::frmIlg2rx,
                                Win::frmAero2rx, Win::frmLog, Win::frmTracking, Win::frmScratchpad};
    for (Win w : order) {
        auto it = followers_.find(w);
        if (isOpen(w) && it != followers_.end())
            it->second->setFrequencyText(text);
    }
    if (isOpen(Win::frmLast20) && last20Enabled && last20Add)
        last20Add(text);
    last20Enabled = true;
    if (isOpen(Win::frmTracking) && trackDataLoaded) {
        trackFreq = freq;
        if (searchTracking)
            searchTracking();
    }
}

QString FrequencyHub::ConvertRx2mfa()
{
    static const char *const ar7030[] = {"", "a", "a", "f", "d", "c", "l", "u"};
    static const char *const nrd[] = {"d", "c", "u", "l", "a", "f", "d", "a", "a"};
    static const char *const nrd545[] = {"d", "c", "u", "l", "a", "f", "a", "a", "a"};
    static const char *const rx320[] = {"a", "u", "l", "c"};
    int m = 0;
    switch (rxType) {
    case rxAR7030:
        m = activeDriver() ? activeDriver()->Mode() : 0;
        return m >= 0 && m <= 7 ? QString::fromLatin1(ar7030[m]) : QString();
    case rxNRD535:
        m = activeDriver() ? activeDriver()->Mode() : 0;
        return m >= 0 && m <= 8 ? QString::fromLatin1(nrd[m]) : QString();
    case rxRX320:
        m = rx320Mode;
        return m >= 0 && m <= 3 ? QString::fromLatin1(rx320[m]) : QString();
    case rxNRD545:
        m = activeDriver() ? activeDriver()->Mode() : 0;
        return m >= 0 && m <= 8 ? QString::fromLatin1(nrd545[m]) : QString();
    default:
        return {};
    }
}

namespace {
struct ModeSet {
    char letter;
    int16_t mode;
    int16_t bandwidth; // -1: from the settings or not set
    int16_t agc;       // -1: left as it is
    int16_t agcShown;  // the value handed to the panel
};
} // namespace

void FrequencyHub::SetRx2mfa(QString &letter)
{
    letter = letter.toUpper();
    if (rxType < 1 || rxType > 4 || letter.size() != 1)
        return;
    const char l = letter[0].toLatin1();
    RxDriver *d = activeDriver();
    auto apply = [&](int16_t mode, int16_t bw, bool setBw, int16_t agc, bool setAgc, int16_t agcShown) {
        if (d)
            d->setMode(mode);
        if (panel_)
            panel_->hubModeChanged(mode);
        if (setBw) {
            if (d)
                d->setBandwidth(bw);
            if (panel_)
                panel_->hubBandwidthChanged(bw);
        }
        if (setAgc) {
            if (d)
                d->setAgcspeed(agc);
            if (panel_)
                panel_->hubAgcspeedChanged(agcShown);
        }
    };
    switch (rxType) {
    case rxAR7030: {
        auto opt = [](int i) { return numtext::cint(slotArOption(i)); };
        switch (l) {
        case 'A': apply(1, opt(0), true, 0, true, 0); break;
        case 'U': apply(7, opt(1), true, 2, true, 2); break;
        case 'L': apply(6, opt(1), true, 2, true, 2); break;
        case 'C': apply(5, opt(2), true, 0, true, 0); break;
        case 'F': apply(3, opt(3), true, 0, false, 0); break;
        case 'D': apply(4, opt(1), true, 0, true, 0); break;
        default: break;
        }
        break;
    }
    case rxNRD535:
        switch (l) {
        case 'A': apply(4, 0, true, 1, true, 1); break;
        case 'U': apply(2, 1, true, 0, true, 0); break;
        case 'L': apply(3, 1, true, 0, true, 0); break;
        case 'C': apply(1, slotNrdOption(0) == 1 ? 2 : 1, true, 1, true, 1); break;
        case 'F': apply(5, 3, true, 0, false, 0); break;
        case 'D': apply(6, 1, true, 1, true, 1); break;
        default: break;
        }
        break;
    case rxRX320:
        // "U" and "L" run the receiver slow but show the panel index of medium: kept as it always was.
        switch (l) {
        case 'A': apply(0, 2, true, 3, true, 2); break;
        case 'U': apply(1, 10, true, 1, true, 1); break;
        case 'L': apply(2, 10, true, 1, true, 1); break;
        case 'C': apply(3, 23, true, 3, true, 2); break;
        default: break;
        }
        break;
    case rxNRD545: {
        int16_t mode = -1;
        switch (l) {
        case 'A': mode = 4; break;
        case 'U': mode = 2; break;
        case 'L': mode = 3; break;
        case 'C': mode = 1; break;
        case 'F': mode = 5; break;
        case 'D': mode = 0; break;
        default: break;
        }
        if (mode >= 0)
            apply(mode, 0, false, 0, false, 0);
        break;
    }
    default:
        break;
    }
}

void FrequencyHub::Update4RxFreq()
{
    if (rxType < 1 || rxType > 4)
        return;
    double f = rxType == rxRX320 ? rx320Freq : (activeDriver() ? activeDriver()->FrequencyA() : 0.0);
    if (panel_)
        panel_->hubFrequencyAChanged(f);
}

QVariant FrequencyHub::Update2RxFreq()
{
    if (rxType < 1 || rxType > 4)
        return QVariant();
    double f = rxType == rxRX320 ? rx320Freq : (activeDriver() ? activeDriver()->FrequencyA() : 0.0);
    if (panel_)
        panel_->hubFrequencyAChanged(f);
    return QVariant(f);
}

void FrequencyHub::Comm1_OnComm(CommLine &comm)
{
    if (!dialActive)
        return;
    const QString received = QString::fromLatin1(comm.Input());
    if (comm.CommEvent() == CommLine::comEvReceive)
        getfreq(term, received);
}

void FrequencyHub::getfreq(QString &box, const QString &received)
{
    box += received;
    if (!box.endsWith(u'\r'))
        return;
    if (rxType == rxNRD535 || rxType == rxNRD545) {
        last20Enabled = !stepsIgnored();
        const int right = rxType == rxNRD535 ? 10 : 12;
        trackFreq = numtext::Val(box.right(right).left(8)) / 1000.0;
        if (panel_)
            panel_->hubFrequencyAChanged(trackFreq);
    }
    box.clear();
    if (searchTracking)
        searchTracking();
}
