#pragma once
// A start window with a panel opened on a simulated receiver, as the user opens it: a data
// directory whose "comports.ini" says "sim", the model in rxType, and the start window's Go.
// The simulators belong to the test, so they can be read after the panel has closed the line.
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "drivers/jrc_common.h"
#include "panels/frmPanelBase.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"
#include "sim/ar7030_sim.h"
#include "sim/nrd_sim.h"
#include "sim/rx320_sim.h"
#include "testutil.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

// Hands the line's bytes to a simulator that outlives the line. A silenced one swallows them,
// as a set that has gone quiet; heard is told of every piece the computer writes.
class SimOnLoan : public SimDevice {
public:
    bool silent = false;
    std::function<void(const QByteArray &)> heard;
    QByteArray swallowed;
    // The set speaks again and takes what it missed.
    void wake()
    {
        silent = false;
        target_->receive(std::exchange(swallowed, {}));
    }

    explicit SimOnLoan(SimDevice *target) : target_(target)
    {
        target_->transmit = [this](const QByteArray &b) { send(b); };
        target_->log = [this](const QString &s) { note(s); };
    }
    ~SimOnLoan() override
    {
        target_->transmit = nullptr;
        target_->log = nullptr;
    }
    void receive(const QByteArray &bytes) override
    {
        if (heard)
            heard(bytes);
        if (silent)
            swallowed += bytes;
        else
            target_->receive(bytes);
    }
    int baudRate() const override { return target_->baudRate(); }
    QString model() const override { return target_->model(); }

private:
    SimDevice *target_;
};

struct PanelRig {
    TestEnv env;
    QTemporaryDir dir;
    std::vector<std::unique_ptr<Ar7030Sim>> ars;
    std::vector<std::unique_ptr<Rx320Sim>> rxs;
    std::vector<std::unique_ptr<NrdSim>> nrds;
    std::function<void(Ar7030Sim &)> prepareAr;
    std::unique_ptr<frmWelcome> welcome;
    QPointer<frmPanelBase> panel;

    explicit PanelRig(int type)
    {
        dirPath = dir.path() + "/";
        computeFullDirTable();
        rxType = int16_t(type);
        slotCommPort() = 1;
        slotStartstep() = 0; // "5"
        remoteLock = remoteCommand = lockState = 0;
        writeFile(dir.filePath("comports.ini"), "sim\r\n");
        CommLine::setSimulatorFactory([this]() -> std::unique_ptr<SimDevice> {
            if (rxType == rxAR7030) {
                ars.push_back(std::make_unique<Ar7030Sim>());
                if (prepareAr)
                    prepareAr(*ars.back());
                return std::make_unique<SimOnLoan>(ars.back().get());
            }
            if (rxType == rxNRD535 || rxType == rxNRD545) {
                if (rxType == rxNRD535)
                    nrds.push_back(std::make_unique<Nrd535Sim>());
                else
                    nrds.push_back(std::make_unique<Nrd545Sim>());
                return std::make_unique<SimOnLoan>(nrds.back().get());
            }
            rxs.push_back(std::make_unique<Rx320Sim>());
            return std::make_unique<SimOnLoan>(rxs.back().get());
        });
        welcome = std::make_unique<frmWelcome>();
        // The start window as after its load: shown again when a panel ends.
        isOpen(Win::frmWelcome) = true;
    }

    ~PanelRig()
    {
        if (panel) {
            panel->close();
            delete panel.data();
        }
        welcome.reset();
        CommLine::setSimulatorFactory({});
        remoteLock = remoteCommand = lockState = 0;
    }

    template <class P>
    P *open()
    {
        welcome->imgGo_Click();
        panel = qobject_cast<frmPanelBase *>(frmWelcome::openWindow(Win(int(windowFor(rxType)))));
        return qobject_cast<P *>(panel.data());
    }

    static Win windowFor(int type)
    {
        switch (type) {
        case rxAR7030: return Win::frmAR7030;
        case rxRX320: return Win::frmRX320;
        case rxNRD535: return Win::frmNRD535;
        case rxNRD545: return Win::frmNRD545;
        default: return Win::frmNoRx;
        }
    }

    Ar7030Sim &ar() { return *ars.back(); }
    Rx320Sim &rx() { return *rxs.back(); }
    SimBackend *line() const { return qobject_cast<SimBackend *>(welcome->Comm1.backend()); }
    qsizetype wireSize() const { return line() ? line()->written.size() : 0; }

    // Types into the frequency box and presses Enter, as the listener does.
    void typeFrequency(const QString &text)
    {
        panel->txtFrequencyA->clear();
        QTest::keyClicks(panel->txtFrequencyA, text);
        QTest::keyClick(panel->txtFrequencyA, Qt::Key_Return);
    }

    // Keys as written in a key sequence ("Ctrl+9", "Shift+F3"), space separated, pressed on
    // the widget that has the focus.
    void press(const QString &keys)
    {
        for (const QString &k : keys.split(u' ', Qt::SkipEmptyParts)) {
            const QKeyCombination c = QKeySequence::fromString(k)[0];
            QWidget *target = QApplication::focusWidget();
            if (!target || !panel->isAncestorOf(target))
                target = panel->txtFrequencyA;
            QTest::keyClick(target, c.key(), c.keyboardModifiers());
        }
    }

    void click(const char *name)
    {
        auto *w = panel->findChild<QWidget *>(QLatin1String(name));
        QVERIFY2(w, name);
        QTest::mouseClick(w, Qt::LeftButton);
    }
};
