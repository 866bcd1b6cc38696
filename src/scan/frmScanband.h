#pragma once
// "Scan band": sweeps the receiver through a band in equal steps, charts the S-meter of every
// step, can loop, hold on a signal until it has gone, save a sweep, overlay up to four saved ones,
// and tune to a frequency picked in the chart.
#include "panels/menu_holds_qt.h"
#include "scan/scan_band.h"
#include "scan/scan_receiver_qt.h"
#include "ui/widgets/window_guard.h"

#include <QTimer>
#include <QWidget>
#include <array>
#include <memory>

class ChartCanvas;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class SpinButton;

class frmScanband : public QWidget {
    Q_OBJECT
public:
    explicit frmScanband(QWidget *parent = nullptr);
    ~frmScanband() override;

    static frmScanband *open();
    void Form_Load();

    ChartCanvas *picScanband = nullptr;
    QGroupBox *fraSetup = nullptr;
    std::array<QLineEdit *, 4> txtInput{};
    QCheckBox *chkLoop = nullptr, *chkSqlonoff = nullptr;
    std::array<QRadioButton *, 3> optShow{};
    SpinButton *spnSqlon = nullptr, *spnSqloff = nullptr;
    QLabel *lblSqlon = nullptr, *lblSqloff = nullptr, *lblSqlonat = nullptr, *lblSqloffat = nullptr;
    QLabel *lblSsqlon = nullptr, *lblTimedate = nullptr, *lblFreqlow = nullptr, *lblFreqhigh = nullptr;
    QLabel *lblFreq = nullptr, *lblFreq1 = nullptr;
    std::array<QLabel *, 4> lblDbname{};
    QPushButton *cmdStart = nullptr, *cmdStop = nullptr, *cmdContinue = nullptr, *cmdCls = nullptr,
                *cmdTunerx = nullptr, *cmdSave = nullptr, *cmdLoad = nullptr, *cmdPanel = nullptr,
                *cmdExit = nullptr;
    QTimer tmrScanband;
    QTimer tmrSqlon;

    void cmdStart_Click();
    void tmrScanband_Timer();
    void tmrSqlon_Timer();
    void cmdContinue_Click();
    void cmdStop_Click();
    void cmdTunerx_Click();
    void cmdCls_Click();
    void cmdSave_Click();
    void cmdLoad_Click();
    void cmdExit_Click();
    void spnSqlon_SpinUp();
    void spnSqlon_SpinDown();
    void spnSqloff_SpinUp();
    void spnSqloff_SpinDown();
    void chkLoop_Click();
    void chkSqlonoff_Click();
    void optShow_Click(int index);
    void picScanband_MouseMove(double x, double y);
    void picScanband_MouseDown(double x, double y);
    // The file store's reader and writer of kind 6.
    void LoadSanFile();
    void SaveSanFile();

    int SqlOnIndex = 21;
    int SqlOffIndex = 19;
    int ShowMode = 0;
    ScanReceiver *receiver() const { return receiver_.get(); }

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void drawStatic();
    void setRunning(bool running);
    void stopTimers();
    void tuneTo(double khz);
    void showSqlon();
    void showSqloff();
    void showFileControls();
    double lastStep() const;

    std::unique_ptr<ScanReceiver> receiver_;
    MenuHold holds_;
    scanband::Levels ScanBandPrev1{}, ScanBandPrev2{};
    float ShowValue = 0;
    int overlayCounter_ = 0;
    bool closedMidSweep_ = false;
    bool ticking_ = false;
    WindowGuard guard_{this};
};
