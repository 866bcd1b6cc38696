#pragma once
// What the ILG and Aero list windows share: a fixed-pitch list of .FTL rows with its file labels,
// the load, query, scan, panel, height and exit buttons and the frequency box; the hidden query
// window filled from its ini file at each opening; the kind 3 reader of the window's subtype
// registered while the window is open; clicks and the timed scan tuning through the hub.
#include "core/shared_state.h"
#include "data/ftl_query.h"
#include "ui/widgets/list_frame.h"
#include "ui/widgets/raise_or_load.h"
#include "ui/widgets/text_grid.h"
#include "ui/widgets/window_guard.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <array>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class FtlListWindow;

// A query window: frames of a check box and a combo box each, the frequency frame's two boxes,
// the search, clear and cancel buttons and the percentage label. Hidden until the list window's
// query button shows it; the search hides it again.
class FtlQueryWindow : public QWidget {
    Q_OBJECT
public:
    struct Frame {
        const char *caption;
        bool hasBox;   // "Station currently on the air" has a check box only
    };
    FtlQueryWindow(FtlListWindow *list, Win win, const char *name, const QString &title, bool aero,
                   const std::vector<Frame> &frames, const QString &searchCaption);
    ~FtlQueryWindow() override;

    // chkQuery by frame; cmbQuery by box (the frames' boxes, then lower and upper frequency).
    std::vector<QCheckBox *> chkQuery;
    std::vector<QComboBox *> cmbQuery;
    QPushButton *cmdSearchilg = nullptr;
    QPushButton *cmdClear = nullptr;
    QPushButton *cmdCancel = nullptr;
    QLabel *lblProgress = nullptr;

    // Loaded hidden, with the choices of each box.
    void Form_Load(const std::vector<QStringList> &choices);
    void Form_Unload();

    void cmdSearchilg_Click();
    void cmdClear_Click();
    void cmdCancel_Click();

    ftlquery::Criteria criteria() const;

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    FtlListWindow *list_;
    Win win_;
    bool aero_;
    // The frame of each check box's combo box, -1 for none.
    std::vector<int> boxOfCheck_;
    WindowGuard guard_{this};
};

class frmIlgquery : public FtlQueryWindow {
    Q_OBJECT
public:
    explicit frmIlgquery(FtlListWindow *list);
};

class frmAeroquery : public FtlQueryWindow {
    Q_OBJECT
public:
    explicit frmAeroquery(FtlListWindow *list);
};

class FtlListWindow : public QWidget {
    Q_OBJECT
public:
    struct Look {
        Win win;
        const char *name;
        int subtype;            // fileSubtype of kind 3
        const char *listName;   // lstIlgq, lstAero
        QString title;
        QString typeCaption;    // "ILG Radio", "Aero list"
        QString loadCaption;
        QString queryCaption;
        const char *queryFile;
        int maxDelay;           // seconds
        bool sorts;
    };
    explicit FtlListWindow(const Look &look);
    ~FtlListWindow() override;

    QLabel *lblDbtype = nullptr;
    QLabel *lblDbname = nullptr;
    TextGrid *list = nullptr;
    QPushButton *cmdLoad = nullptr;
    QPushButton *cmdQuery = nullptr;
    QPushButton *cmdSort = nullptr;   // none in the Aero window
    QPushButton *cmdScan = nullptr;
    QLineEdit *txtScandelay = nullptr;
    QTimer tmrScan;
    QLineEdit *txtFrequencyA = nullptr;
    QPushButton *cmdHeigh = nullptr;
    QPushButton *cmdPanel = nullptr;
    QPushButton *cmdExit = nullptr;

    // Reads the query file (missing: run-time error 53) into the hidden query window, registers
    // the reader and shows the window.
    void Form_Load();
    // LoadIlgFtl / LoadAeroFtl: the chosen file's records, every one on the list.
    void LoadFtl();
    void cmdLoad_Click();
    void cmdQuery_Click();
    void cmdScan_Click();
    void tmrScan_Timer();
    void cmdHeigh_Click();
    void cmdExit_Click();
    void list_Click(int row);

    FtlQueryWindow *queryWindow() const { return query_; }
    // The list emptied and filled with the entries of ilgListIndex, as a load or a query shows them.
    void showList(bool asLoaded);
    int32_t shownRows() const { return shown_; }
    bool scanning() const { return tmrScan.isActive(); }
    int32_t scanPosition() const { return scanPos_; }

protected:
    void closeEvent(QCloseEvent *e) override;
    // Each window's own query window, not yet loaded.
    virtual FtlQueryWindow *makeQueryWindow() = 0;
    WindowGuard guard_{this};

private:
    void setScanControls(bool enabled);
    Look look_;
    ListFrame *frame_ = nullptr;
    FtlQueryWindow *query_ = nullptr;
    int32_t shown_ = 0;
    int32_t scanPos_ = 0;
    double lastTuned_ = 0;
};

