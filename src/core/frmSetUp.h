#pragma once
// The editor of the settings: every control writes its value into the shared block as it
// changes or is left; only Save writes the block to "brelvox2.ini".
#include "core/setup_checks.h"

#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>
#include <map>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

class frmSetUp : public QWidget {
    Q_OBJECT
public:
    explicit frmSetUp(QWidget *parent = nullptr);
    ~frmSetUp() override;

    // Opens the window, or brings the open one to the front: there is one at a time.
    static frmSetUp *open();
    static frmSetUp *instance();

    // Moves to the saved position, puts the values of memory into the controls, shows the window.
    void Form_Load();

    void optRxtype_Click(int index);
    void optCom_Click(int index);
    void optRxtargetarea_Click(int index);
    void optStartstep_Click(int index);
    void chkNRDoptions_Click(int index);
    void chkMute_Click(int index);
    void chkDisableLLLR_Click();
    void chkDisableLL_Click();

    void txtDirpath_LostFocus();
    void txtRxlatitude_LostFocus();
    void txtRxlongitude_LostFocus();
    void txtLt2utc_LostFocus();
    void txtDimbdxc_LostFocus();
    void txtDimown_LostFocus();
    void txtDimlog_LostFocus();
    void txtDimilg_LostFocus();
    void txtARoptions_LostFocus(int index);
    void txtLevelL_LostFocus();
    void txtLevelR_LostFocus();
    void txtAgctc_LostFocus(int index);
    void txtNrbc_LostFocus(int index);
    void txtFreqcorr_LostFocus(int index);
    void txtLevel_LostFocus();

    void cmdSave_Click();
    void cmdClose_Click();
    void cmdReload_Click();

    std::array<QRadioButton *, 5> optRxtype{};
    std::array<QRadioButton *, 5> optCom{};
    std::array<QRadioButton *, 9> optRxtargetarea{};
    std::array<QRadioButton *, 3> optStartstep{};
    QLineEdit *txtLt2utc = nullptr;
    QLineEdit *txtDirpath = nullptr;
    QLineEdit *txtRxlatitude = nullptr;
    QLineEdit *txtRxlongitude = nullptr;
    QLineEdit *txtDimbdxc = nullptr;
    QLineEdit *txtDimown = nullptr;
    QLineEdit *txtDimlog = nullptr;
    QLineEdit *txtDimilg = nullptr;

    std::array<QGroupBox *, 5> fraRx{}; // by rxType
    std::array<QLineEdit *, 4> txtARoptions{};
    std::array<QLabel *, 4> lblOpt7030{};
    QLineEdit *txtLevelL = nullptr;
    QLineEdit *txtLevelR = nullptr;
    QCheckBox *chkDisableLLLR = nullptr;
    std::array<QCheckBox *, 4> chkNRDoptions{};
    std::array<QLineEdit *, 3> txtAgctc{};
    std::array<QLabel *, 3> lblAgctc{};
    std::array<QLineEdit *, 2> txtNrbc{};
    std::array<QLabel *, 2> lblNrbc{};
    std::array<QLineEdit *, 2> txtFreqcorr{};
    std::array<QLabel *, 2> lblfreqcorr{};
    QLineEdit *txtLevel = nullptr;
    QCheckBox *chkDisableLL = nullptr;
    std::array<QCheckBox *, 2> chkMute{};

    QPushButton *cmdSave = nullptr;
    QPushButton *cmdClose = nullptr;
    QPushButton *cmdReload = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *e) override;

private:
    struct BoxRef { setup::Box box; int index; std::function<void()> lostFocus; };
    void buildControls();
    QWidget *buildGeneric();
    QWidget *buildReceiverFrames();
    QLineEdit *addBox(const char *name, setup::Box box, int index, int chars, std::function<void()> lostFocus);
    void loadValues();
    void showFrame(int type);
    // Stores and checks the box's text; a failure puts the default in, tells, and may take focus back.
    void leave(QLineEdit *box);

    std::map<QLineEdit *, BoxRef> boxes_;
    QPointer<QLineEdit> entered_; // the box that has the focus, so that only a real leave checks
    bool checking_ = false;       // a failed check's message and focus-back are under way
    bool swallowPress_ = false;   // the click that left a failing box is not a click
    bool lastLeaveFailed_ = false;
    bool unloading_ = false;
};
