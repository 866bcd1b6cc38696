#pragma once
// "Log Screen Format": which fields the log's grid shows. A click changes the mask at once;
// OK rebuilds the grid, Save writes the mask to "loggridformat.ini".
#include "log/log_book.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QLabel;
class QPushButton;
class frmLog;

class frmLogFormat : public QDialog {
    Q_OBJECT
public:
    explicit frmLogFormat(frmLog *log);
    ~frmLogFormat() override;

    void Form_Load();

    std::array<QCheckBox *, logbook::kFields> chkLogformat{};
    QLabel *lblFormatlength = nullptr, *lblLoglength = nullptr;
    QPushButton *cmdOK = nullptr, *cmdSave = nullptr;

    void chkLogformat_Click(int n);
    void cmdOK_Click();
    void cmdSave_Click();

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;

private:
    void showLength();
    void Form_Unload();
    frmLog *log_;
    bool unloaded_ = false;
};
