#pragma once
// "Logging": the log book in a grid under a title row, with the record form, the screen format
// and sort windows, and the log's files. The log itself lives in log_book for the whole run;
// the window shows it and edits it.
#include "log/frmLoginput.h"
#include "log/log_book.h"
#include "ui/widgets/text_grid.h"
#include "ui/widgets/window_guard.h"

#include <QPointer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class ListFrame;

class frmLog : public QWidget {
    Q_OBJECT
public:
    explicit frmLog(QWidget *parent = nullptr);
    ~frmLog() override;

    // The open window, raised, or a new one loaded.
    static frmLog *open();
    // The open window, if any.
    static frmLog *current();
    // Reads the mask first: a missing "loggridformat.ini" is run-time error 53 before anything
    // is shown or registered.
    void Form_Load();

    TextGrid *grdTitles = nullptr;
    TextGrid *grdLog = nullptr;
    QLabel *lblDbname = nullptr;
    QLineEdit *txtFrequencyA = nullptr;
    QPushButton *cmdLoad = nullptr, *cmdAddrecord = nullptr, *cmdChangerecord = nullptr,
                *cmdDeleterecord = nullptr, *cmdFormat = nullptr, *cmdSort = nullptr, *cmdSave = nullptr,
                *cmdsaveas = nullptr, *cmdClose = nullptr, *cmdHeigh = nullptr, *cmdWidth = nullptr,
                *cmdPanel = nullptr, *cmdExit = nullptr;

    void FillLogGrid();
    void BuildLogColumns();
    void SetLogButtons(bool enabled);

    void cmdLoad_Click();
    void cmdAddrecord_Click();
    void cmdChangerecord_Click();
    void cmdDeleterecord_Click();
    void cmdFormat_Click();
    void cmdSort_Click();
    void cmdSave_Click();
    void cmdsaveas_Click();
    void cmdClose_Click();
    void cmdExit_Click();
    void cmdHeigh_Click();
    void cmdWidth_Click();
    void grdLog_Click(int row, int col, const QString &text);

    // The record the form works on is a new one.
    bool addFlag() const { return addFlag_; }
    // The record row of the grid's current row (grid row 0 is the fixed row): -1 and below for none.
    int selectedRow() const;
    // The width in twips of grid column col, from the columns table.
    int columnTwips(int col) const;
    // The record form, while it is shown.
    frmLoginput *loginput() const { return input_; }

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void build();
    void Form_Unload();
    void openInput(bool add, int row);
    void hideFixedRow();
    void logReader();
    void logWriter();

    ListFrame *frame_ = nullptr;
    logbook::Columns columns_;
    QPointer<frmLoginput> input_;
    bool addFlag_ = false;
    bool wide_ = false;
    bool leaving_ = false;
    bool registered_ = false;
    WindowGuard guard_{this};
};
