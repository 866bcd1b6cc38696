#pragma once
// "Scan Frequency pairs from list": steps the receiver through the ticked pairs of a list, on
// their A or their B side, one pair each delay, while the listener listens; it reads no signal
// and stops only when told. The pairs outlive the window and are kept in SFP files.
#include "panels/menu_holds_qt.h"
#include "scan/scan_pairs.h"
#include "scan/scan_receiver_qt.h"
#include "ui/widgets/window_guard.h"

#include <QTimer>
#include <QWidget>
#include <array>
#include <memory>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;

class frmScanpairs : public QWidget {
    Q_OBJECT
public:
    explicit frmScanpairs(QWidget *parent = nullptr);
    ~frmScanpairs() override;

    static frmScanpairs *open();
    void Form_Load();

    static constexpr int kRows = scanpairs::kRows;
    std::array<QLabel *, kRows> lblNr{}, lblChannelA{}, lblChannelB{};
    std::array<QCheckBox *, kRows> chkChannel{};
    std::array<QLineEdit *, kRows> txtRemarks{};
    QScrollBar *vsbActnr = nullptr;
    std::array<QRadioButton *, 2> optScanAB{};
    QLineEdit *txtStart = nullptr, *txtEnd = nullptr, *txtDelay = nullptr;
    QLabel *lblFile = nullptr, *lblFilename = nullptr;
    QPushButton *cmdStart = nullptr, *cmdStop = nullptr, *cmdContinue = nullptr, *cmdLoad = nullptr,
                *cmdsaveas = nullptr, *cmdPanel = nullptr, *cmdExit = nullptr;
    QTimer tmrScanpairs;

    void showactivepairs(int a);
    void LoadSfpFile();
    void SaveSfpFile();

    void cmdStart_Click();
    void cmdContinue_Click();
    void cmdStop_Click();
    void cmdLoad_Click();
    void cmdsaveas_Click();
    void cmdExit_Click();
    void tmrScanpairs_Timer();
    void optScanAB_Click(int index);
    void vsbActnr_Change(int value);
    void lblChannel_Click(QLabel *label);
    void chkChannel_LostFocus(int row);
    void txtRemarks_LostFocus(int row);
    void txtStart_Change();
    void txtEnd_Change();
    void txtDelay_Change();

    bool scanning() const { return tmrScanpairs.isActive(); }
    int ScanFirst() const { return scanFirst_; }
    int ScanLast() const { return scanLast_; }
    int ScanPos() const { return scanPos_; }
    float ScanDelay() const { return scanDelay_; }

protected:
    void closeEvent(QCloseEvent *e) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void run(bool fromFirst);
    void setIdleControls(bool enabled);
    // The row that has the focus, stored as on leaving it, before its pair leaves the row.
    void storeFocusedRow();
    int rowPair(int row) const;
    std::unique_ptr<ScanReceiver> receiver_;
    MenuHold holds_;
    int pairShown_ = 0;
    int scanFirst_ = 0;
    int scanLast_ = 0;
    int scanPos_ = 0;
    float scanDelay_ = 1;
    bool ticking_ = false;
    WindowGuard guard_{this};
};
