#pragma once
// Finds the source of a conversion: the ILG tables (fileConvertKind 1) or the Aero list (2), by
// drive, directory and file lists; OK hands the choice to the converter that asked.
#include <QDialog>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

class frmILGfinddbf : public QDialog {
    Q_OBJECT
public:
    explicit frmILGfinddbf(QWidget *parent = nullptr);

    // Shows the window for fileConvertKind and blocks until it is gone.
    static void showModal(QWidget *parent = nullptr);
    void Form_Load();

    void drvILG_Change();
    void dirILG_Change(); // the entry chosen in the directory list is entered
    void cmdOK_Click();
    void cmdCancel_Click();

    // The directory the lists show.
    QString directory() const { return dir_; }
    void setDirectory(const QString &dir);

    QComboBox *drvILG = nullptr;
    QListWidget *dirILG = nullptr;
    QListWidget *flbILG = nullptr;
    QLabel *lblDir = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;

protected:
    void closeEvent(QCloseEvent *e) override;
    void reject() override;

private:
    void fillFiles();
    void unload();
    QString dir_;
    QString pattern_;
    bool unloaded_ = false;
};
