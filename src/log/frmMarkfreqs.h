#pragma once
// "Marked Freqs": frequencies the listener marks by hand from the panel, newest first, and a scan
// that tunes to each in turn every two seconds. The list outlives the window.
#include "ui/widgets/window_guard.h"

#include <QTimer>
#include <QWidget>

class QPushButton;
class TextGrid;

class frmMarkfreqs : public QWidget {
    Q_OBJECT
public:
    explicit frmMarkfreqs(QWidget *parent = nullptr);
    ~frmMarkfreqs() override;

    static frmMarkfreqs *open();
    void Form_Load();

    TextGrid *grdTitles = nullptr;
    TextGrid *grdMarkfreqs = nullptr;
    QPushButton *cmdMark = nullptr;
    QPushButton *cmdCls = nullptr;
    QPushButton *cmdScan = nullptr;
    QTimer tmrScan;

    void cmdMark_Click();
    void cmdCls_Click();
    void cmdScan_Click();
    void tmrScan_Timer();
    void grdMarkfreqs_Click(int row);

    bool scanning() const { return tmrScan.isActive(); }
    // The entry the scan tuned last, -1 before its first tick.
    int scanEntry() const { return scanEntry_; }

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    // The scan ended because nothing in the list can be scanned: said so, never ticking on.
    void stopForLackOfEntries();
    void stopScan();
    int scanEntry_ = -1;
    WindowGuard guard_{this};
};
