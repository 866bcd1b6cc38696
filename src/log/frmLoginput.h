#pragma once
// "Log input": the record form of the log book, window-modal to "Logging" only, so that the
// panel and Tracking stay usable while it is shown (Tracking writes into txtLoginput).
#include "log/log_book.h"
#include "ui/widgets/window_guard.h"

#include <QDialog>
#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class frmLog;

class frmLoginput : public QDialog {
    Q_OBJECT
public:
    // add: the record is row logCount, already counted; else the record at row.
    frmLoginput(frmLog *log, bool add, int row);
    ~frmLoginput() override;

    // Place, open flag, registration; the number shown and the boxes filled; then shown.
    void Form_Load();

    QLabel *lblRecordnr = nullptr;
    std::array<QLabel *, logbook::kFields> lblLoginput{};
    std::array<QLineEdit *, logbook::kFields> txtLoginput{};
    QPushButton *cmdOk = nullptr, *cmdCancel = nullptr, *cmdGetcurrentsetting = nullptr;

    void cmdOK_Click();
    void cmdCancel_Click();
    void cmdGetcurrentsetting_Click();

    bool addMode() const { return add_; }
    int row() const { return row_; }

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;

private:
    void build();
    void Form_Unload();
    void emptyBoxes();
    // A record added and not kept is taken back.
    void takeBack();

    frmLog *log_;
    bool add_;
    int row_;
    bool unloaded_ = false;
    WindowGuard guard_{this};
};
