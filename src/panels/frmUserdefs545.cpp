#include "frmUserdefs545.h"
#include "core/frmWelcome.h"
#include "drivers/clsNRD545.h"
#include "panels/frmNRD545.h"

#include <QPointer>

namespace {
QPointer<frmUserdefs545> theUserdefs545;
}

frmUserdefs545::frmUserdefs545(QWidget *parent)
    : frmUserdefsBase(Win::frmUserdefs545, QStringLiteral("NRD-545 User Definitions"), parent)
{
    const QStringList offOn = {tr("Off"), tr("On")};
    build({{"Tuning steps 1 Hz 1", 1, "opt1Hzdisplay", offOn},
           {"Tuning steps 10 Hz 2", 2, "opt10Hzdisplay", offOn},
           {"Tuning steps 3", 3, "optKhzsteps", {"9 k", "6.25 k", "5 k", "1 k"}},
           {"Tuning steps 100 Hz 4", 4, "opt100Hzdisplay", offOn},
           {"Pulses / turn 8", 8, "optPulses", {"250", "500", "1000"}},
           {"S-meter display 9", 9, "optSmeterdisplay", {"Single segment", "Bar Graph", "Peak hold"}},
           {"Beep on KeyPress 10", 10, "optBeeponkey", offOn},
           {"Scan auto stop 11", 11, "optScanautostop", offOn},
           {"Skip during scan 12", 12, "optSkip", offOn},
           {"Relay Mode 13", 13, "optRelaymode", {"Normally Off", "Normally On", "Squelch-On/Off"}},
           {"SSB Freq. Display 18", 18, "optFreqshift", {"No shift", "1.5 kHz shift"}},
           {"Clock Colon Blinking 19", 19, "optColonblink", offOn},
           {"Input tuning circuit 24", 24, "OptInputtuning", offOn},
           {"Panel lock 28", 28, "optPanellock", offOn},
           {"Squelch LED 31", 31, "optSquelchled", offOn}},
          {{"CW BFO Pitch 14", 14, "CWpitch", nrdpanel::kCwPitch545},
           {"Scan Time 20", 20, "Scantime", nrdpanel::kScanTime545},
           {"Sweep time 21", 21, "Sweeptime", nrdpanel::kSweepTime545},
           {"Scan auto stop time 22", 22, "Autostoptime", nrdpanel::kAutostopTime545}},
          4);
}

frmUserdefs545::~frmUserdefs545() = default;

frmUserdefs545 *frmUserdefs545::open()
{
    if (theUserdefs545) {
        theUserdefs545->showNormal();
        theUserdefs545->raise();
        theUserdefs545->activateWindow();
        return theUserdefs545;
    }
    auto *w = new frmUserdefs545;
    theUserdefs545 = w;
    w->Form_Load();
    return w;
}

void frmUserdefs545::Form_Load()
{
    NRD545A = std::make_unique<clsNRD545>(frmWelcome::instance()->Comm1);
    showAtLoad();
}

void frmUserdefs545::sendUserdef(int index, int value)
{
    if (NRD545A)
        NRD545A->setUserdefs(int16_t(index), int16_t(value));
}

void frmUserdefs545::holdLock(int v)
{
    // Through the panel, so that its bars follow; without one, the window's own instance.
    if (auto *p = qobject_cast<frmNRD545 *>(frmWelcome::openWindow(Win::frmNRD545)))
        p->lockoffon(v);
    else if (NRD545A)
        NRD545A->Lockonoff(int16_t(v));
}

void frmUserdefs545::beforeDefaults()
{
    tookLock_ = lockState == 0;
    if (tookLock_)
        holdLock(1);
}

void frmUserdefs545::afterDefaults()
{
    if (tookLock_)
        holdLock(0);
    tookLock_ = false;
}

void frmUserdefs545::releaseDriver() { NRD545A.reset(); }
