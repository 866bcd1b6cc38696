#pragma once
// "Frequency Scratchpad": ten rows of eight frequencies with a note each, kept in FSP files; a
// cell tunes the receiver, and a row can be scanned at the listener's delay.
#include "log/small_lists.h"
#include "ui/widgets/window_guard.h"

#include <QTimer>
#include <QWidget>
#include <array>
#include <vector>

class ListFrame;
class QLineEdit;
class QPushButton;
class TextGrid;

class frmScratchpad : public QWidget {
    Q_OBJECT
public:
    explicit frmScratchpad(QWidget *parent = nullptr);
    ~frmScratchpad() override;

    static frmScratchpad *open();
    void Form_Load();

    ListFrame *frame() const { return frame_; }
    TextGrid *lblTitles = nullptr;
    TextGrid *grdScratchpad = nullptr;
    std::array<QLineEdit *, smalllists::kPadRows> txtNotes{};
    QLineEdit *txtScandelay = nullptr;
    QPushButton *cmdRx2sp = nullptr, *cmdSp2rx = nullptr, *cmdClrcell = nullptr, *cmdClrgrid = nullptr,
                *cmdClrnotes = nullptr, *cmdLoad = nullptr, *cmdSave = nullptr, *cmdScan = nullptr,
                *cmdStop = nullptr, *cmdExit = nullptr;
    QTimer tmrScan;

    // The grid and notes as the file reader and writer see them, and back.
    smalllists::Scratchpad contents() const;
    void showContents(const smalllists::Scratchpad &pad);
    void cleargridscratchpad();
    void LoadFspFile();
    void SaveFspFile();

    void cmdRx2sp_Click();
    void cmdSp2rx_Click();
    void grdScratchpad_Click(int row, int col);
    void cmdClrcell_Click();
    void cmdClrgrid_Click();
    void cmdClrnotes_Click();
    void cmdLoad_Click();
    void cmdSave_Click();
    void cmdScan_Click();
    void tmrScan_Timer();
    void cmdStop_Click();
    void cmdExit_Click();

    bool scanning() const { return tmrScan.isActive(); }

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    int activeRow() const;
    int activeColumn() const;
    void setButtons(bool enabled);
    ListFrame *frame_ = nullptr;
    std::vector<double> scanTable_;
    int scanIndex_ = -1;
    bool leaving_ = false;
    WindowGuard guard_{this};
};
