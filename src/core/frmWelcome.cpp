#include "frmWelcome.h"
#include "frmAbout.h"
#include "frmSetUp.h"
#include "core/settings_files.h"
#include "core/shared_state.h"
#include "drivers/clsAR7030.h"
#include "drivers/clsNRD535.h"
#include "drivers/clsNRD545.h"
#include "drivers/clsRX320.h"
#include "panels/frmAR7030.h"
#include "panels/frmNRD535.h"
#include "panels/frmNRD545.h"
#include "panels/frmNoRx.h"
#include "panels/frmRX320.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/images.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {
frmWelcome *theWelcome = nullptr;
std::map<Win, QWidget *> &openWindows()
{
    static std::map<Win, QWidget *> m;
    return m;
}

QToolButton *imageButton(QWidget *parent, const char *name, const QString &label, const QPixmap &pix)
{
    auto *b = new QToolButton(parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setIcon(QIcon(pix));
    b->setIconSize(pix.size());
    b->setAutoRaise(true);
    b->setToolTip(label);
    b->setAccessibleName(label);
    b->setFocusPolicy(Qt::StrongFocus);
    return b;
}
} // namespace

std::unique_ptr<RxDriver> makeDriver(int type, CommLine &comm)
{
    switch (type) {
    case rxAR7030: return std::make_unique<clsAR7030>(comm);
    case rxRX320: return std::make_unique<clsRX320>(comm);
    case rxNRD535: return std::make_unique<clsNRD535>(comm);
    case rxNRD545: return std::make_unique<clsNRD545>(comm);
    default: return nullptr;
    }
}

frmWelcome::frmWelcome(QWidget *parent) : QWidget(parent)
{
    theWelcome = this;
    setObjectName(QStringLiteral("frmWelcome"));
    setWindowTitle(QStringLiteral("Brelvox"));
    setAttribute(Qt::WA_QuitOnClose, true);
    // A dark face, like a receiver's, on which every model's colour of lblGo reads well.
    QPalette pal = palette();
    pal.setColor(QPalette::Window, QColor(34, 38, 46));
    pal.setColor(QPalette::WindowText, QColor(230, 232, 236));
    pal.setColor(QPalette::Button, QColor(34, 38, 46));
    setPalette(pal);
    setAutoFillBackground(true);

    imgGo = imageButton(this, "imgGo", QStringLiteral("Go"), images::go());
    imgSetup = imageButton(this, "imgSetup", QStringLiteral("Set-up"), images::setup());
    imgAbout = imageButton(this, "imgAbout", QStringLiteral("About"), images::about());
    imgExit = imageButton(this, "imgExit", QStringLiteral("Exit"), images::exitDoor());
    lblGo = new QLabel(QStringLiteral("NRD535"), this);
    lblGo->setObjectName(QStringLiteral("lblGo"));
    lblGo->setAlignment(Qt::AlignCenter);
    QFont f = lblGo->font();
    f.setPointSize(f.pointSize() + 6);
    f.setBold(true);
    lblGo->setFont(f);
    showRxType(rxNRD535); // the design-time look
    lblGo->setText(QStringLiteral("NRD535"));

    auto *title = new QLabel(QStringLiteral("Brelvox"), this);
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont tf = title->font();
    tf.setPointSize(tf.pointSize() + 10);
    tf.setBold(true);
    title->setFont(tf);
    title->setAlignment(Qt::AlignCenter);
    auto *sub = new QLabel(QStringLiteral("Station program for short-wave listeners"), this);
    sub->setAlignment(Qt::AlignCenter);

    auto *row = new QHBoxLayout;
    row->addWidget(imgGo);
    row->addWidget(imgSetup);
    row->addWidget(imgAbout);
    row->addWidget(imgExit);
    auto *col = new QVBoxLayout(this);
    col->addWidget(title);
    col->addWidget(sub);
    col->addSpacing(8);
    col->addLayout(row);
    col->addWidget(lblGo);
    setFixedSize(sizeHint());

    connect(imgGo, &QToolButton::clicked, this, &frmWelcome::imgGo_Click);
    connect(imgSetup, &QToolButton::clicked, this, &frmWelcome::imgSetup_Click);
    connect(imgAbout, &QToolButton::clicked, this, &frmWelcome::imgAbout_Click);
    connect(imgExit, &QToolButton::clicked, this, &frmWelcome::imgExit_Click);
    connect(&Comm1, &CommLine::OnComm, this, [this] { hub.Comm1_OnComm(Comm1); });
    timers.onTitles = [this] { writeTitles(); };
    // Exit asked for during a read ends the read at once.
    guard_.setOnHold([this] { Comm1.cutWaits(); });
    nameForAccessibility(this);
}

frmWelcome::~frmWelcome()
{
    hub.releaseDrivers();
    if (theWelcome == this)
        theWelcome = nullptr;
}

frmWelcome *frmWelcome::instance() { return theWelcome; }

void frmWelcome::setOpenWindow(Win w, QWidget *widget)
{
    if (widget)
        openWindows()[w] = widget;
    else
        openWindows().erase(w);
}

void frmWelcome::forgetOpenWindow(Win w, const QWidget *widget)
{
    if (openWindow(w) != widget)
        return;
    openWindows().erase(w);
    isOpen(w) = false;
}

QWidget *frmWelcome::openWindow(Win w)
{
    auto it = openWindows().find(w);
    return it == openWindows().end() ? nullptr : it->second;
}

void frmWelcome::Form_Load()
{
    placeAtLoad(this, Win::frmWelcome);
    fillFixedTables();
    settings::loadPositionsFromCurrentDirectory();
    placeAtLoad(this, Win::frmWelcome);
    settings::loadSettingsFromCurrentDirectory();
    showRxType(rxType);
    timers.Showtime.start();
    show();
    isOpen(Win::frmWelcome) = true;
}

void frmWelcome::showRxType(int type)
{
    struct Look { const char *caption; unsigned bgr; };
    static const Look looks[] = {{"No RX", 0xAAAAAA}, {"AR7030", 0xFF9090}, {"NRD535", 0x8080FF},
                                 {"RX320", 0x80CC80}, {"NRD545", 0x0000FF}};
    if (type < 0 || type > 4)
        return;
    const Look &l = looks[type];
    lblGo->setText(QString::fromLatin1(l.caption));
    const QColor c(int(l.bgr & 0xFF), int((l.bgr >> 8) & 0xFF), int((l.bgr >> 16) & 0xFF));
    QPalette p = lblGo->palette();
    p.setColor(QPalette::WindowText, c);
    lblGo->setPalette(p);
}

void frmWelcome::imgGo_Click()
{
    hub.releaseDrivers();
    if (rxType < 0 || rxType > 4)
        return;
    PanelOpener open;
    switch (rxType) {
    case rxNone: open = [] { return frmNoRx::open(); }; break;
    case rxAR7030: open = [] { return frmAR7030::open(); }; break;
    case rxRX320: open = [] { return frmRX320::open(); }; break;
    case rxNRD535: open = [] { return frmNRD535::open(); }; break;
    case rxNRD545: open = [] { return frmNRD545::open(); }; break;
    }
    hide();
    if (rxType >= 1)
        hub.setDriver(rxType, makeDriver(rxType, Comm1));
    open();
}

void frmWelcome::imgSetup_Click() { frmSetUp::open(); }

void frmWelcome::imgAbout_Click()
{
    auto *about = new frmAbout;
    about->Form_Load();
}

void frmWelcome::imgExit_Click() { close(); }

void frmWelcome::Form_Unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    storeAtUnload(this, Win::frmWelcome);
    hub.releaseDrivers();
    settings::savePositions();
    isOpen(Win::frmWelcome) = false;
}

void frmWelcome::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    Form_Unload();
    e->accept();
    // Ending the start window ends the program, whatever else is open.
    QApplication::closeAllWindows();
    QApplication::quit();
}

void frmWelcome::writeTitles()
{
    if (rxType >= 0 && rxType <= 4) {
        const Win p = panelWin(rxType);
        if (isOpen(p))
            if (QWidget *w = openWindow(p))
                w->setWindowTitle(panelTitle(rxType, ltText, utcText));
    }
    struct L { Win w; const char *prefix; };
    static const L lists[] = {{Win::frmBdxc, "BDXC     LT : "},
                              {Win::frmOwn, "OWN     LT : "},
                              {Win::frmIlg2rx, "ILG Query     LT : "},
                              {Win::frmAero2rx, "Aero Query     LT : "},
                              {Win::frmLog, "Logging     LT : "}};
    for (const L &l : lists)
        if (isOpen(l.w))
            if (QWidget *w = openWindow(l.w))
                w->setWindowTitle(listTitle(QString::fromLatin1(l.prefix), ltText, utcText));
}
