#pragma once
// "Scan Frequencies from list": up to twenty frequencies visited in turn, each with a bar chart of
// its last twenty levels and a row of trend cells (rising, steady, falling) every few passes.
#include "panels/menu_holds_qt.h"
#include "scan/scan_list.h"
#include "scan/scan_receiver_qt.h"
#include "ui/widgets/window_guard.h"

#include <QTimer>
#include <QWidget>
#include <array>
#include <memory>

class ChartCanvas;
class QLabel;
class QLineEdit;
class QPushButton;

class frmScanlist : public QWidget {
    Q_OBJECT
public:
    explicit frmScanlist(QWidget *parent = nullptr);
    ~frmScanlist() override;

    static frmScanlist *open();
    void Form_Load();

    std::array<QLineEdit *, scanlist::kPlaces> txtFreqlist{};
    QLineEdit *txtUpdate = nullptr;
    QLineEdit *txtDelay = nullptr;
    QLabel *lblUpdate = nullptr, *lblDelay = nullptr;
    QLabel *lblRun = nullptr, *lblRuns = nullptr;
    QLabel *lblStart = nullptr, *lblStartUTC = nullptr, *lblEnd = nullptr, *lblEndUTC = nullptr;
    QPushButton *cmdStart = nullptr, *cmdStop = nullptr, *cmdContinue = nullptr, *cmdCls = nullptr,
                *cmdLoad = nullptr, *cmdsaveas = nullptr, *cmdPanel = nullptr, *cmdExit = nullptr;
    ChartCanvas *picture = nullptr;
    QTimer tmrScanlist;

    void cmdStart_Click();
    void tmrScanlist_Timer();
    void cmdStop_Click();
    void cmdContinue_Click();
    void cmdCls_Click();
    void cmdLoad_Click();
    void cmdsaveas_Click();
    void cmdExit_Click();
    void txtFreqlist_Click(int index);

    // The reader and writer of kind 11 on the file chosen in the load and save windows.
    void LoadSflFile();
    void SaveSflFile();

    bool scanning() const { return tmrScanlist.isActive(); }
    const scanlist::ListScan &state() const { return scan_; }
    scanlist::Places places() const;

protected:
    void closeEvent(QCloseEvent *e) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void drawStatic();
    void drawColumn(int place, int k, float v);
    void drawTrendCells();
    void setPlaceColor(int place, int standardColor);
    void stopForEmptyList();
    // txtDelay's seconds, the box set to the fallback where its own value is out of range.
    double readDelay();

    scanlist::ListScan scan_;
    std::unique_ptr<ScanReceiver> rx_;
    MenuHold holds_;
    bool ticking_ = false;
    WindowGuard guard_{this};
};
