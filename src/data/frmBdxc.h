#pragma once
// Club schedule lists: the file read whole with its continuation marks, then shown by the time
// the listener asks for (or all of it); a click on a frequency tunes to it.
#include "data/list_window_qt.h"

class frmBdxc : public ScheduleListWindow {
    Q_OBJECT
public:
    frmBdxc();

    // The open window, raised, or a new one loaded.
    static frmBdxc *open();

    TextGrid *grdBdxc = nullptr;
    QLabel *lblDbname = nullptr;

    void LoadBdxcFile();
    void grdBdxc_Click(int row, int col, const QString &text);

protected:
    void readChosenFile() override { LoadBdxcFile(); }
    void gridClicked(int row, int col, const QString &text) override { grdBdxc_Click(row, col, text); }
};
