#pragma once
// The listener's own lists: every line shown; a click on a frequency tunes to it, then sets the
// line's mode.
#include "data/list_window_qt.h"

class frmOwn : public ScheduleListWindow {
    Q_OBJECT
public:
    frmOwn();

    // The open window, raised, or a new one loaded.
    static frmOwn *open();

    TextGrid *grdOwn = nullptr;
    QLabel *lblDbname = nullptr;

    void LoadOwnFile();
    void grdOwn_Click(int row, int col, const QString &text);

protected:
    void readChosenFile() override { LoadOwnFile(); }
    void gridClicked(int row, int col, const QString &text) override { grdOwn_Click(row, col, text); }
};
