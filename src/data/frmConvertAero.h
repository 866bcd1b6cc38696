#pragma once
// Aero Database Conversion: "aerolist.txt", found with frmILGfinddbf, turned into "aero.ftl"
// (full details) or "aero2.ftl" (network data only) in "RX2DB\". It has no window number, so it
// keeps no position between runs.
#include "ui/widgets/window_guard.h"

#include <QWidget>
#include <array>

class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

class frmConvertAero : public QWidget {
    Q_OBJECT
public:
    explicit frmConvertAero(QWidget *parent = nullptr);

    static frmConvertAero *open();
    static frmConvertAero *openWindow();
    void Form_Load();

    void setConnectOption(int i);
    void optDbconnect_Click(int i);
    void cmdLocate_Click();
    void cmdConvert_Click();
    void cmdStop_Click();
    void cmdExit_Click();

    QLabel *lblTitle = nullptr;
    QPushButton *cmdLocate = nullptr;
    QGroupBox *fraConnect = nullptr;
    std::array<QRadioButton *, 2> optDbconnect{};
    QGroupBox *fraType = nullptr;
    std::array<QRadioButton *, 2> optDbtype{};
    QPushButton *cmdConvert = nullptr, *cmdStop = nullptr, *cmdExit = nullptr;
    QLabel *lblCount = nullptr, *lblShowrecord = nullptr;

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void build();
    bool stop_ = false;
    WindowGuard guard_{this};
};
