#pragma once
// "Filtering on ILG db": an ILG .FTL file as a list, narrowed by the ILG query, ordered by the
// sort window, tuned by a click or the timed scan.
#include "data/ftl_windows_qt.h"

class frmIlg2rx : public FtlListWindow {
    Q_OBJECT
public:
    frmIlg2rx();

    // The open window, raised, or a new one loaded.
    static frmIlg2rx *open();

    TextGrid *lstIlgq = nullptr;

    void LoadIlgFtl() { LoadFtl(); }
    void cmdSort_Click();

protected:
    FtlQueryWindow *makeQueryWindow() override { return new frmIlgquery(this); }
};
