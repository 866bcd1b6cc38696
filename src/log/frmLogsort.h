#pragma once
#include <QDialog>
#include <array>

class QPushButton;
class QRadioButton;
class frmLog;

// "Select Sort order": the sort key of the log, "Date" first.
class frmLogsort : public QDialog {
    Q_OBJECT
public:
    explicit frmLogsort(frmLog *log);
    ~frmLogsort() override;

    void Form_Load();

    std::array<QRadioButton *, 5> optSort{};
    QPushButton *cmdOK = nullptr, *cmdCancel = nullptr;

    void cmdOK_Click();
    void cmdCancel_Click();
    // The option that is set.
    int choice() const;

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;

private:
    void Form_Unload();
    frmLog *log_;
    bool unloaded_ = false;
};
