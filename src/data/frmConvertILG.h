#pragma once
// ILGRadio Database Conversion: an ILG table (short wave or long and medium wave) found with
// frmILGfinddbf, connected, and turned into its FTL file in "RX2DB\", record by record.
#include "data/ilg_convert.h"
#include "ui/widgets/window_guard.h"

#include <QWidget>
#include <array>
#include <memory>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

class frmConvertILG : public QWidget {
    Q_OBJECT
public:
    explicit frmConvertILG(QWidget *parent = nullptr);
    ~frmConvertILG() override;

    // The open window, raised, or a new one loaded.
    static frmConvertILG *open();
    // The open window, or nullptr.
    static frmConvertILG *openWindow();
    void Form_Load();

    // Turns the option on and runs its click, as a click on it does.
    void setConnectOption(int i);
    void optDbconnect_Click(int i);
    void cmdLocate_Click();
    void cmdConvert_Click();
    void cmdStop_Click();
    void cmdExit_Click();

    // The table connected, or nullptr.
    const ilg::Table *table() const { return table_.get(); }
    // The table name of the connection ("ILGSDATA", "ILGADATA"), empty without one.
    QString recordSource() const { return recordSource_; }

    QLabel *lblTitle = nullptr;
    QPushButton *cmdLocate = nullptr;
    QGroupBox *fraConnect = nullptr;
    std::array<QRadioButton *, 3> optDbconnect{};
    QGroupBox *fraInclude = nullptr;
    std::array<QCheckBox *, 4> chkInclude{};
    QLineEdit *datILG = nullptr;
    QPushButton *cmdConvert = nullptr, *cmdStop = nullptr, *cmdExit = nullptr;
    QLabel *lblConvert = nullptr, *lblRecnum = nullptr, *lblRecord = nullptr;

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void build();
    void disconnectTable();
    std::unique_ptr<ilg::Table> table_;
    QString recordSource_;
    bool stop_ = false;
    WindowGuard guard_{this};
};
