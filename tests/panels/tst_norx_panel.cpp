// The panel without a receiver: it opens no port, shows its decoration, and only closing, the
// menu and emptying the frequency box act.
#include "core/frmWelcome.h"
#include "core/textfile.h"
#include "panels/frmNoRx.h"
#include "panels/menu_holds_qt.h"
#include "panels/menu_windows_qt.h"
#include "panel_rig.h"
#include "testmain.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QToolButton>
#include <QPushButton>
#include <QSlider>
#include <QtTest>

class TestNoRxPanel : public QObject {
    Q_OBJECT
private slots:
    void opensWithoutAPort()
    {
        PanelRig rig(rxNone);
        frmNoRx *p = rig.open<frmNoRx>();
        QVERIFY(p && isOpen(Win::frmNoRx));
        QVERIFY(rig.welcome->Comm1.backend() == nullptr);
        QCOMPARE(p->windowTitle(), QString("No RX"));
        QCOMPARE(p->lblVolume->text(), QString("50"));
        QCOMPARE(p->lblMode->text(), QString("AM"));
        QCOMPARE(p->lblBandwidth->text(), QString("Wid"));
        QCOMPARE(freqUpperLimit, 30000.0);
        QVERIFY(!p->cmd0to9[1]->isEnabled());
        QVERIFY(!p->menuEntry("mnuFirmware")); // nothing to ask
        QVERIFY(p->menuEntry("mnuAbout")->isEnabled());
    }

    void onlyTheBoxAndClosingAct()
    {
        PanelRig rig(rxNone);
        frmNoRx *p = rig.open<frmNoRx>();
        p->txtFrequencyA->setText("9410.00");
        QTest::keyClick(p->txtFrequencyA, Qt::Key_Up);
        QTest::keyClick(p->txtFrequencyA, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClick(p->txtFrequencyA, Qt::Key_Return);
        QCOMPARE(p->lblMfreq->text(), QString());
        // the hub does nothing without a receiver, and tells nothing
        double f = 9415;
        rig.welcome->Change2FreqA(f);
        QCOMPARE(p->txtFrequencyA->text(), QString("9410.00"));
        QTest::mouseDClick(p->txtFrequencyA, Qt::LeftButton);
        QCOMPARE(p->txtFrequencyA->text(), QString());
        VERIFY_DIALOGS_CLEAN(rig.env);
        rig.click("cmdClose");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(rig.panel.isNull());
        QVERIFY(!isOpen(Win::frmNoRx));
        QVERIFY(rig.welcome->isVisible());
    }

    // Each row of the menu's window table finds its entry on every panel it serves, once, and
    // enabled as far as it is offered: a name misspelt or a model wrong leaves a window unreachable.
    void menuWindowRows_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("No RX") << int(rxNone);
        QTest::newRow("AR7030") << int(rxAR7030);
        QTest::newRow("RX320") << int(rxRX320);
        QTest::newRow("NRD535") << int(rxNRD535);
        QTest::newRow("NRD545") << int(rxNRD545);
    }
    void menuWindowRows()
    {
        QFETCH(int, type);
        PanelRig rig(type);
        writeFile(rig.dir.filePath("rx320settings.ini"),
                  textfile::joinLines({"7100.5", "10", "-150", "1", "400", "1", "40", "20"}));
        frmPanelBase *p = rig.open<frmPanelBase>();
        QVERIFY(p);
        QStringList seen;
        for (const MenuWindow &row : menuWindows()) {
            if (!row.serves(type))
                continue;
            QVERIFY2(!seen.contains(row.entry), row.entry);
            seen << row.entry;
            QAction *a = p->menuEntry(row.entry);
            QVERIFY2(a, row.entry);
            QVERIFY2(a->isEnabled() == (!row.offered || row.offered()), row.entry);
        }
        QVERIFY(seen.contains("mnuAbout"));
        // Holds are counted: one window's going leaves what another still holds, and the last
        // gives an entry back only if a window serves it.
        const bool smeterServed = std::any_of(menuWindows().begin(), menuWindows().end(), [&](const MenuWindow &r) {
            return r.serves(type) && QLatin1String(r.entry) == QLatin1String("mnuSmeter");
        });
        {
            MenuHold a({"mnuScan", "mnuSmeter"});
            {
                MenuHold b({"mnuScan", "mnuAbout"});
                QVERIFY(!p->menuEntry("mnuScan")->isEnabled() && !p->menuEntry("mnuAbout")->isEnabled());
            }
            QVERIFY(!p->menuEntry("mnuScan")->isEnabled() && p->menuEntry("mnuAbout")->isEnabled());
        }
        QVERIFY(p->menuEntry("mnuScan")->isEnabled() && p->menuEntry("mnuPropagation")->isEnabled());
        QCOMPARE(p->menuEntry("mnuSmeter")->isEnabled(), smeterServed);
    }

    // What assistive tools get: a control that shows text is known by that text, never by a
    // name set over it; a picture or a glyph by a readable name and a tooltip; every named control
    // by its name in its description. Each panel, with the windows it opens of its own.
    void accessibleNames_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QStringList>("entries"); // opened from the menu first
        QTest::newRow("No RX") << int(rxNone) << QStringList{"mnuAbout"};
        QTest::newRow("AR7030") << int(rxAR7030) << QStringList{};
        QTest::newRow("RX320") << int(rxRX320) << QStringList{};
        QTest::newRow("NRD535") << int(rxNRD535) << QStringList{"mnuUserdefs"};
        QTest::newRow("NRD545") << int(rxNRD545) << QStringList{"mnuUserdefs", "mnuAdvancedDSP"};
    }
    void accessibleNames()
    {
        QFETCH(int, type);
        QFETCH(QStringList, entries);
        PanelRig rig(type);
        writeFile(rig.dir.filePath("rx320settings.ini"),
                  textfile::joinLines({"7100.5", "10", "-150", "1", "400", "1", "40", "20"}));
        frmPanelBase *p = rig.open<frmPanelBase>();
        QVERIFY(p);
        for (const QString &e : entries)
            p->menuEntry(e)->trigger();
        QList<QWidget *> widgets;
        for (QWidget *top : QApplication::topLevelWidgets())
            if (top->isVisible() || top == rig.welcome.get()) {
                widgets << top;
                widgets << top->findChildren<QWidget *>();
            }
        QVERIFY(widgets.size() > 30);
        static const QRegularExpression readable(QStringLiteral("[\\p{L}\\p{N}]"));
        QStringList faults;
        for (QWidget *w : widgets) {
            const QString id = w->objectName().isEmpty() ? QString(w->metaObject()->className()) : w->objectName();
            if (id.startsWith("qt_"))
                continue; // Qt's own parts
            if (!w->objectName().isEmpty() && w->accessibleDescription() != w->objectName())
                faults << id + ": description \"" + w->accessibleDescription() + "\"";
            QString text;
            bool showsText = true;
            if (auto *l = qobject_cast<QLabel *>(w))
                text = l->text();
            else if (auto *e = qobject_cast<QLineEdit *>(w))
                text = e->text();
            else if (auto *c = qobject_cast<QComboBox *>(w))
                text = c->currentText();
            else if (auto *g = qobject_cast<QGroupBox *>(w))
                text = g->title();
            else if (auto *b = qobject_cast<QAbstractButton *>(w))
                text = b->text(), showsText = text.contains(readable) || (text.isEmpty() && b->icon().isNull()
                                                                         && !qobject_cast<QToolButton *>(b));
            else
                continue;
            const QString name = w->accessibleName();
            if (showsText && !name.isEmpty() && name != text)
                faults << id + ": named \"" + name + "\" over \"" + text + "\"";
            if (!showsText && (name.isEmpty() || w->toolTip().isEmpty()))
                faults << id + ": a picture needs a name and a tooltip";
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join("\n")));
    }
};

BRELVOX_TEST(TestNoRxPanel)
#include "tst_norx_panel.moc"
