#pragma once
// Comma-cut ".320" station files: every line shown; a click anywhere in a row sets its mode,
// then tunes to its frequency.
#include "data/list_window_qt.h"

class frm320Files : public ScheduleListWindow {
    Q_OBJECT
public:
    frm320Files();

    // The open window, raised, or a new one loaded.
    static frm320Files *open();

    TextGrid *grd320Files = nullptr;
    QLabel *lblDBname = nullptr;

    void Load320File();
    void grd320Files_Click(int row, int col, const QString &text);

protected:
    void readChosenFile() override { Load320File(); }
    void gridClicked(int row, int col, const QString &text) override { grd320Files_Click(row, col, text); }
};
