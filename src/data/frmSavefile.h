#pragma once
#include <QDialog>

class QComboBox;
class QPushButton;

// "Select Save Filename": a name for the kind in fileType, checked, then the kind's writer.
class frmSavefile : public QDialog {
    Q_OBJECT
public:
    explicit frmSavefile(QWidget *parent = nullptr);

    // Set fileType first; blocks until the window is gone.
    static void showModal(QWidget *parent = nullptr);

    void Form_Load();
    void Form_Unload();

    void cmdOK_Click();
    void cmdCancel_Click();

    QComboBox *cmbSavefile = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;

private:
    bool unloaded_ = false;
};
