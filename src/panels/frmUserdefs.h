#pragma once
// The JRC receivers' user settings. Each choice goes to the receiver the moment it is made,
// through the window's own driver instance; nothing is kept in a file, the receiver is the store
// (it cannot report them, so the window starts with no choice marked).
#include "core/shared_state.h"
#include "panels/nrd_panel_logic.h"
#include "ui/widgets/window_guard.h"

#include <QList>
#include <QWidget>
#include <map>
#include <memory>

class QLabel;
class QPushButton;
class QRadioButton;
class SpinButton;
class clsNRD535;

// What the two models' windows share: option groups, values set with a spin button and a "Set"
// button, "Reset to Defaults" and "OK".
class frmUserdefsBase : public QWidget {
    Q_OBJECT
public:
    // A group of choices: the receiver's item, the option array's name, the captions by value.
    struct OptionGroup {
        const char *title;
        int index;
        const char *name;
        QStringList captions;
    };
    // A value with its label ("lblCWpitch"), spin button ("spnCWpitch") and "Set" button
    // ("cmdCWpitch"), all named from stem ("CWpitch").
    struct ValueSetting {
        const char *title;
        int index;
        const char *stem;
        nrdpanel::SpinSetting spin;
    };

    ~frmUserdefsBase() override;

    QPushButton *cmdDefaults = nullptr;
    QPushButton *cmdOK = nullptr;

    // The options of an item, in value order.
    QList<QRadioButton *> options(int index) const;
    // The value a setting's spin button holds now.
    int value(int index) const;
    QLabel *valueLabel(int index) const;

    // Marks an option and runs its action, as a click does.
    void setOption(int index, int value);
    void option_Click(int index, int value);
    void spin_Click(int index, bool up);
    void cmdSet_Click(int index);
    void cmdDefaults_Click();
    void cmdOK_Click();

protected:
    frmUserdefsBase(Win win, const QString &title, QWidget *parent);
    void build(const QList<OptionGroup> &groups, const QList<ValueSetting> &values, int columns);
    // Shows the window at its saved place and marks it open.
    void showAtLoad();
    virtual void sendUserdef(int index, int value) = 0;
    // What an option does beyond sending (the NRD-535's VBT bypass colours the panel).
    virtual void optionExtra(int, int) {}
    virtual const std::vector<nrdpanel::DefaultRow> &defaultRows() const = 0;
    // Around a defaults run (the NRD-545 holds the lock meanwhile).
    virtual void beforeDefaults() {}
    virtual void afterDefaults() {}
    virtual void releaseDriver() = 0;
    void closeEvent(QCloseEvent *e) override;
    WindowGuard guard_{this};

private:
    struct Held {
        ValueSetting setting;
        int value;
        QLabel *label;
    };
    Win win_;
    std::map<int, QList<QRadioButton *>> options_;
    std::map<int, Held> values_;
    bool busy_ = false;
};

class frmUserdefs : public frmUserdefsBase {
    Q_OBJECT
public:
    explicit frmUserdefs(QWidget *parent = nullptr);
    ~frmUserdefs() override;

    // The open window, raised, or a new one loaded.
    static frmUserdefs *open();
    void Form_Load();

    std::unique_ptr<clsNRD535> NRD535A;

protected:
    void sendUserdef(int index, int value) override;
    void optionExtra(int index, int value) override;
    const std::vector<nrdpanel::DefaultRow> &defaultRows() const override { return nrdpanel::nrd535Defaults(); }
    void releaseDriver() override;
};
