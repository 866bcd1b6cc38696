// Pictures of the windows as a listener sees them on the demo data, for a look by eye: every
// panel, then the list and log windows opened from the AR7030 panel's menu with the demo files
// loaded. Run by scripts/shots, which prepares the demo copy; never part of the tests.
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "panels/frmPanelBase.h"
#include "scan/frmScanband.h"
#include "scan/frmScanlist.h"
#include "scan/frmScanpairs.h"
#include "ui/facades.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

namespace {

// Every selection box is answered "all"; any message is printed and answered OK.
class ShotDialogs : public ui::DialogBackend {
public:
    int msgBox(const QString &prompt, int, const QString &title) override
    {
        std::fprintf(stderr, "message \"%s\": %s\n", qPrintable(title), qPrintable(prompt));
        return ui::vbOK;
    }
    QString inputBox(const QString &, const QString &, const QString &) override { return QStringLiteral("all"); }
};

QString outDir;
std::shared_ptr<ui::FixedClock> shotClock;

void save(QWidget *w, const QString &name)
{
    if (!w) {
        std::fprintf(stderr, "no window for %s\n", qPrintable(name));
        return;
    }
    w->adjustSize();
    QApplication::processEvents();
    const QString path = outDir + u'/' + name + QStringLiteral(".png");
    if (w->grab().save(path))
        std::printf("%s\n", qPrintable(path));
}

void load(int kind, const QString &name)
{
    fileType = int16_t(kind);
    chosenFileTable[size_t(kind)] = name;
    runReader();
    QApplication::processEvents();
}

void tune(frmWelcome &w, double khz)
{
    w.Change2FreqA(khz);
    QApplication::processEvents();
}

QWidget *topLevel(const char *name)
{
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String(name) && w->isVisible())
            return w;
    return nullptr;
}

void click(QWidget *window, const char *name)
{
    if (auto *b = window ? window->findChild<QAbstractButton *>(QLatin1String(name)) : nullptr)
        b->click();
    QApplication::processEvents();
}

// A window's own extras: a second file, a query, the dialogs it opens.
void extras(frmWelcome &w, Win win, QWidget *window)
{
    switch (win) {
    case Win::frmLast20:
    case Win::frmMarkfreqs:
        for (double f : {5975.0, 6070.0, 7255.0, 9410.0, 11690.0}) {
            tune(w, f);
            click(window, "cmdMark");
        }
        break;
    case Win::frmBdxc:
        save(window, QStringLiteral("bdxc"));
        load(1, QStringLiteral("ILG_A26ALLTOW.TXT"));
        break;
    case Win::frmTracking:
        // All stations in a wide catch: the ones on the air now stand out in their colours.
        click(window, "optHitsall_1");
        if (auto *catchBox = window->findChild<QLineEdit *>(QStringLiteral("txtCatchrange")))
            catchBox->setText(QStringLiteral("3000"));
        tune(w, 9410.0);
        break;
    case Win::frmIlg2rx:
        save(window, QStringLiteral("ilg_loaded"));
        click(window, "cmdQuery");
        if (QWidget *query = topLevel("frmIlgquery")) {
            // The English broadcasts.
            if (auto *check = query->findChild<QCheckBox *>(QStringLiteral("chkQuery_0")))
                check->setChecked(true);
            if (auto *box = query->findChild<QComboBox *>(QStringLiteral("cmbQuery_0")))
                box->setCurrentText(QStringLiteral("English"));
            save(query, QStringLiteral("ilg_querywindow"));
            click(query, "cmdSearchilg");
        }
        break;
    case Win::frmLog:
        if (auto *grid = window->findChild<QAbstractItemView *>(QStringLiteral("grdLog")))
            grid->setCurrentIndex(grid->model()->index(2, 1));
        click(window, "cmdChangerecord");
        save(frmWelcome::openWindow(Win::frmLoginput), QStringLiteral("log_record"));
        click(frmWelcome::openWindow(Win::frmLoginput), "cmdCancel");
        click(window, "cmdFormat");
        save(topLevel("frmLogFormat"), QStringLiteral("log_format"));
        click(topLevel("frmLogFormat"), "cmdOK");
        click(window, "cmdSort");
        save(topLevel("frmLogsort"), QStringLiteral("log_sort"));
        click(topLevel("frmLogsort"), "cmdCancel");
        break;
    default:
        break;
    }
}

struct Window {
    const char *entry;
    Win win;
    const char *shot;
    int kind;
    int subtype;
    const char *file;
    const char *object = "";
};

void listWindows(frmWelcome &w, frmPanelBase &panel)
{
    const Window windows[] = {
        {"mnuLast20", Win::frmLast20, "last20", 0, 0, nullptr},
        {"mnuMaqrkfreqs", Win::frmMarkfreqs, "marked", 0, 0, nullptr},
        {"mnuBdxc", Win::frmBdxc, "bdxc_ilg", 1, 0, "BDX_A26ENGTOE.TXT"},
        {"mnuOwn", Win::frmOwn, "own", 2, 0, "OWN_FAVOURITES.TXT"},
        {"mnu320Files", Win::frm320Files, "files320", 10, 0, "DEMO_STATIONS.320"},
        {"mnuScratchpad", Win::frmScratchpad, "scratchpad", 9, 0, "FSP_demo.TXT"},
        {"mnuLog", Win::frmLog, "log", 4, 0, "LOG_demo2026.TXT"},
        {"mnuIlg2Rx", Win::frmIlg2rx, "ilg_query", 3, 1, "ILGSDATA.FTL"},
        {"mnuAero2rx", Win::frmAero2rx, "aero", 3, 2, "aero.ftl"},
        {"mnuTracking", Win::frmTracking, "tracking", 5, 0, "ILGSDATA.FTL"},
        {"mnuConvertILG1", Win::frmConvertILG, "convert_ilg", 0, 0, nullptr, "frmConvertILG"},
    };
    for (const Window &x : windows) {
        QAction *a = panel.menuEntry(QString::fromLatin1(x.entry));
        if (!a || !a->isEnabled()) {
            std::fprintf(stderr, "%s is not offered\n", x.entry);
            continue;
        }
        a->trigger();
        QApplication::processEvents();
        if (x.kind) {
            fileSubtype = int16_t(x.subtype);
            load(x.kind, QString::fromLatin1(x.file));
        }
        // Windows that keep no open-window entry are found by their name.
        const auto find = [&x] {
            QWidget *found = frmWelcome::openWindow(x.win);
            return found ? found : topLevel(x.object);
        };
        extras(w, x.win, find());
        save(find(), QString::fromLatin1(x.shot));
    }
    // The Aero converter has no window number of its own.
    if (QAction *a = panel.menuEntry(QStringLiteral("mnuConvertaero"))) {
        a->trigger();
        QApplication::processEvents();
        save(topLevel("frmConvertAero"), QStringLiteral("convert_aero"));
    }
}

// The scans mid-run, the clock going on by each tick's delay so that the stations rise and fade;
// then the band chart with two saved sweeps over it. Each window closes before the next: an open
// scan holds the others' menu entries.
void scanWindows(frmPanelBase &panel)
{
    const auto trigger = [&panel](const char *entry) {
        QAction *a = panel.menuEntry(QString::fromLatin1(entry));
        if (a && a->isEnabled())
            a->trigger();
        else
            std::fprintf(stderr, "%s is not offered\n", entry);
        QApplication::processEvents();
    };
    trigger("mnuScanFreqlist");
    if (auto *list = qobject_cast<frmScanlist *>(frmWelcome::openWindow(Win::frmScanlist))) {
        load(11, QStringLiteral("SFL_demo.TXT"));
        list->txtDelay->setText(QStringLiteral("3"));
        list->txtUpdate->setText(QStringLiteral("3"));
        list->cmdStart->click();
        for (int i = 0; i < 15 * 12; ++i) {
            shotClock->advanceSecs(3);
            list->tmrScanlist_Timer();
            QApplication::processEvents();
        }
        QApplication::processEvents();
        save(list, QStringLiteral("scanlist"));
        list->cmdStop->click();
        list->close();
    }
    trigger("mnuScanfreqpairs");
    if (auto *pairs = qobject_cast<frmScanpairs *>(frmWelcome::openWindow(Win::frmScanpairs))) {
        load(12, QStringLiteral("SFP_demo.TXT"));
        // Its own timer steps it, as the listener sees it: ticks called from here while the timer
        // waits on the receiver would nest in its reads.
        pairs->txtDelay->setText(QStringLiteral("0.5"));
        pairs->cmdStart->click();
        QElapsedTimer running;
        running.start();
        while (running.elapsed() < 2200)
            QApplication::processEvents(QEventLoop::AllEvents, 50);
        save(pairs, QStringLiteral("scanpairs"));
        pairs->cmdStop->click();
        pairs->close();
    }
    trigger("mnuScanBand");
    if (auto *band = qobject_cast<frmScanband *>(frmWelcome::openWindow(Win::frmScanband))) {
        const char *inputs[] = {"5900", "6200", "2", "0"};
        for (int i = 0; i < 4; ++i)
            band->txtInput[size_t(i)]->setText(QLatin1String(inputs[i]));
        band->cmdStart->click();
        for (int i = 0; i < 110; ++i)
            band->tmrScanband_Timer();
        save(band, QStringLiteral("scanband"));
        band->cmdStop->click();
        band->cmdCls->click();
        load(6, QStringLiteral("SAN_49m_1000Z.TXT"));
        load(6, QStringLiteral("SAN_49m_2000Z.TXT"));
        save(band, QStringLiteral("scanband_overlays"));
        band->close();
    }
    QApplication::processEvents();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: shots OUTDIR DATADIR\n");
        return 2;
    }
    outDir = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(outDir);
    QDir::setCurrent(QString::fromLocal8Bit(argv[2]));
    ui::installDialogs(std::make_shared<ShotDialogs>());
    // One fixed moment, midday in the demo's time zone, so that the same stations are on the air
    // in every picture.
    shotClock = std::make_shared<ui::FixedClock>(QDateTime(QDate(2026, 11, 23), QTime(13, 0)));
    ui::installClock(shotClock);
    for (int type : {int(rxAR7030), int(rxNRD535), int(rxRX320), int(rxNRD545), int(rxNone)}) {
        frmWelcome w;
        w.Form_Load();
        w.timers.Showtime_Timer();
        rxType = int16_t(type);
        w.imgGo_Click();
        QApplication::processEvents();
        auto *panel = qobject_cast<frmPanelBase *>(frmWelcome::openWindow(panelWin(type)));
        if (!panel)
            continue;
        save(panel, panel->objectName().mid(3).toLower());
        if (type == rxAR7030) {
            // The scans first: the marked frequencies' scan that the list windows' pictures leave
            // running would retune the receiver under them.
            scanWindows(*panel);
            listWindows(w, *panel);
            shotClock->set(QDateTime(QDate(2026, 11, 23), QTime(13, 0)));
        }
        panel->close();
        delete panel;
    }
    return 0;
}
