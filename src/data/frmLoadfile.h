#pragma once
#include <QDialog>

class QListWidget;
class QPushButton;

// "Select file to load": the files of the kind in fileType, to load, edit or delete.
class frmLoadfile : public QDialog {
    Q_OBJECT
public:
    explicit frmLoadfile(QWidget *parent = nullptr);

    // Set fileType (and fileSubtype for kind 3) first; blocks until the window is gone.
    static void showModal(QWidget *parent = nullptr);

    void Form_Load();
    void Form_Unload();

    void cmdOK_Click();
    void cmdCancel_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void list_Click();
    void list_DblClick();

    QListWidget *list = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdEdit = nullptr;
    QPushButton *cmdDelete = nullptr;

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;

private:
    bool unloaded_ = false;
};
