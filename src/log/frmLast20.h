#pragma once
// "Last 20 Freqs": the last twenty frequencies tuned, newest first, recorded by the hub while the
// window is loaded, also while it is hidden. The list outlives the window.
#include "ui/widgets/window_guard.h"

#include <QWidget>

class QCheckBox;
class QPushButton;
class TextGrid;

class frmLast20 : public QWidget {
    Q_OBJECT
public:
    explicit frmLast20(QWidget *parent = nullptr);
    ~frmLast20() override;

    // The loaded window shown and raised (also a hidden one), or a new one loaded.
    static frmLast20 *open();
    void Form_Load();

    TextGrid *grdTitles = nullptr;
    TextGrid *grdLast20 = nullptr;
    QCheckBox *chkNofreqsteps = nullptr;
    QPushButton *cmdClear = nullptr;
    QPushButton *cmdExit = nullptr;

    // The hub's entry: text at the head of the list, every row written again.
    void fillgrdlast20(const QString &text);
    void grdLast20_Click(int row);
    void cmdClear_Click();
    void cmdExit_Click();

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void Form_Unload();
    bool hooked_ = false;
    WindowGuard guard_{this};
};
