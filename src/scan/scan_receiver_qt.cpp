#include "scan_receiver_qt.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "drivers/clsAR7030.h"
#include "drivers/jrc_common.h"
#include "panels/frmNRD535.h"
#include "panels/frmNRD545.h"
#include "scan/scan_level.h"

ScanReceiver::ScanReceiver() : type_(rxType)
{
    if (frmWelcome *w = frmWelcome::instance())
        driver_ = makeDriver(type_, w->Comm1);
}

ScanReceiver::~ScanReceiver() = default;

void ScanReceiver::readAttenuation()
{
    if (auto *ar = qobject_cast<clsAR7030 *>(driver_.get()))
        attenuation_ = ar->Attenuator();
    else if (auto *jrc = qobject_cast<JrcDriver *>(driver_.get()))
        attenuation_ = jrc->Attenuator();
}

float ScanReceiver::level()
{
    if (!driver_)
        return 0;
    return scan::compensatedLevel(type_, driver_->Smeter(), attenuation_);
}

void ScanReceiver::lockPanel(int v)
{
    if ((type_ != rxNRD535 && type_ != rxNRD545) || lockState == 1)
        return;
    QWidget *w = frmWelcome::openWindow(panelWin(type_));
    if (auto *p = qobject_cast<frmNRD535 *>(w))
        p->lockoffon(v);
    else if (auto *p = qobject_cast<frmNRD545 *>(w))
        p->lockoffon(v);
}
