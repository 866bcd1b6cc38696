#pragma once
// Memory Management: the memory image in a grid, moved between the receiver, files and the
// printer; a slow scan that tunes the receiver to a range of cells in turn. The window keeps a
// driver of its own and, while open, is the view the memory files report their loads to.
#include "core/shared_state.h"
#include "memory/mem_file.h"
#include "memory/memman_logic.h"
#include "ui/widgets/text_grid.h"
#include "ui/widgets/window_guard.h"

#include <QTimer>
#include <QWidget>
#include <memory>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;
class RxDriver;

class frmMemman : public QWidget, public MemFileView {
    Q_OBJECT
public:
    explicit frmMemman(QWidget *parent = nullptr);
    ~frmMemman() override;

    // The open window, raised, or a new one loaded.
    static frmMemman *open();
    void Form_Load();

    TextGrid *grdTitles = nullptr;
    TextGrid *grdMemman = nullptr;
    QLabel *lblCellnr = nullptr, *lblAtt = nullptr, *lblAgc = nullptr, *lblPbs = nullptr, *lblBfo = nullptr,
           *lblSql = nullptr, *lblScan = nullptr;
    QLabel *lblFrom = nullptr, *lblTo = nullptr;
    QLineEdit *txtFrom = nullptr, *txtTo = nullptr, *txtDelay = nullptr;
    QPushButton *cmdFetch = nullptr, *cmdFill = nullptr, *cmdSort = nullptr, *cmdSetrx2mem = nullptr,
                *cmdChange = nullptr, *cmdCopy = nullptr, *cmdDelete = nullptr, *cmdDump = nullptr,
                *cmdLoad = nullptr, *cmdSaveas = nullptr, *cmdPrint = nullptr, *cmdCls = nullptr,
                *cmdExit = nullptr, *cmdPanel = nullptr, *cmdHeigh = nullptr, *cmdScanrun = nullptr,
                *cmdScanstop = nullptr;
    QTimer tmrScan;

    RxDriver *driver() const { return driver_.get(); }

    // True when at least one cell of the image holds a record.
    bool memarrayloaded() const;
    void memcmdenabler(bool v);
    // Adds row i of the image to the grid.
    void formatmemx2list(int i);
    // The grid emptied to one blank row.
    void cleargrdmemman();
    void clearadditionalinfo();
    // Row r shown again from the image; rows up to r are added where the grid is shorter.
    void showRow(int r);

    void grdMemman_Click(int row);
    void grdMemman_DblClick(int row);
    void lblFrom_Click();
    void lblTo_Click();
    void cmdFetch_Click();
    void cmdFill_Click();
    void cmdSetrx2mem_Click();
    void cmdChange_Click();
    void cmdDump_Click();
    void cmdCopy_Click();
    void cmdDelete_Click();
    void cmdSort_Click();
    void cmdPrint_Click();
    void cmdScanrun_Click();
    void tmrScan_Timer();
    void cmdScanstop_Click();
    void cmdCls_Click();
    void cmdExit_Click();
    void cmdSaveas_Click();
    void cmdLoad_Click();
    void cmdPanel_Click();
    void cmdHeigh_Click();

    bool scanning() const { return scanning_; }

    // --- what the memory files report ---
    void memLoadBegins() override;
    void memRowLoaded(int i) override;
    void memLoadEnds(const QString &fileName) override;
    void memSaveBegins() override;
    void memSaveEnds(const QString &fileName) override;

protected:
    void closeEvent(QCloseEvent *e) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    // Only fetch, load, exit and the panel button, as after the load and a clear.
    void idleCommands();
    void progressLabels(const QString &what);
    // From and to as fill, print and scan take them; when refused, the "Input Error" box under
    // errorTitle and the boxes set back (the delay to "2" where resetDelay).
    std::optional<memman::Range> typedRange(const QString &errorTitle, bool resetDelay);
    void openEditor(int action, const QString &caption, bool needsData);
    // The panel's lock, taken for a job when the listener has not locked the set himself.
    bool takeLock();
    void giveLock(bool took);
    // The line to the receiver has gone (device removed, port closed): jobs stop.
    bool lineGone() const;
    void lineGoneMessage(const QString &job, int cell, const QString &title);
    // The end of a fetch or a fill: commands back, then the ready message or why the job stopped.
    void endJob(int stoppedAt, const QString &job, const QString &title, const QString &ready, int style,
                const QString &readyTitle);
    void scrollTop(int row);
    void setFileName(const QString &name);
    QString fileName() const;

    std::unique_ptr<RxDriver> driver_;
    MemFileView *previousView_ = nullptr;
    bool tall_ = false;
    bool scanning_ = false;
    bool ticking_ = false;
    bool leaving_ = false;
    int scanFrom_ = 0;
    int scanTo_ = 0;
    int scanOffset_ = 0;
    double scanDelay_ = 1;
    WindowGuard guard_{this};
};
