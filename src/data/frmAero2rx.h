#pragma once
// "Filtering on Aerolist": an Aero .FTL file as a list, narrowed by network and frequency, tuned
// by a click or the timed scan (up to a minute on each row).
#include "data/ftl_windows_qt.h"

class frmAero2rx : public FtlListWindow {
    Q_OBJECT
public:
    frmAero2rx();

    // The open window, raised, or a new one loaded.
    static frmAero2rx *open();

    TextGrid *lstAero = nullptr;

    void LoadAeroFtl() { LoadFtl(); }

protected:
    FtlQueryWindow *makeQueryWindow() override { return new frmAeroquery(this); }
};
