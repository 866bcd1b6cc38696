#pragma once
// Shared helpers for tests: scripted dialogs, a fixed clock, a temporary data directory.
#include "sim/sim_device.h"
#include "ui/facades.h"
#include "ui/printing_qt.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <memory>

// Installs scripted dialogs, a fixed clock, recording programs and a printer that records its
// jobs without writing a file, for one test case, and resets the shared block; restores the
// previous backends when it goes.
class TestEnv {
public:
    TestEnv();
    ~TestEnv();
    std::shared_ptr<ui::ScriptedDialogs> dialogs;
    std::shared_ptr<ui::FixedClock> clock;
    std::shared_ptr<ui::RecordingPrograms> programs;
    std::shared_ptr<ui::PdfPrinter> printer;
    // For tests against a real line, where the simulator on the far side runs on real time.
    void installSystemClock();
    // Fails the current test if a dialog came unexpected or an expected one never came.
    bool dialogsClean(QString *why = nullptr) const;

private:
    std::shared_ptr<ui::DialogBackend> oldDialogs_;
    std::shared_ptr<ui::ClockBackend> oldClock_;
    std::shared_ptr<ui::ProgramBackend> oldPrograms_;
    std::shared_ptr<ui::PrinterBackend> oldPrinter_;
};

#define VERIFY_DIALOGS_CLEAN(env) \
    do { QString why_; QVERIFY2((env).dialogsClean(&why_), qPrintable(why_)); } while (0)

// Writes bytes to dir/name, creating folders on the way.
void writeFile(const QString &path, const QByteArray &bytes);
QByteArray readFile(const QString &path);

// The run-time error number that f raises, 0 when it raises none.
int errorOf(const std::function<void()> &f);

class CommLine;
class SimBackend;
// Opens comm on the simulated device with the line settings ("1200,N,8,1"); the backend it
// opened, for the bytes written and the device.
SimBackend *openOnSim(CommLine &comm, std::unique_ptr<SimDevice> device, const QString &settings);

// A receiver that answers every command beginning with trigger with the same bytes (for
// replies a real set never gives).
class FixedReplyDevice : public SimDevice {
public:
    FixedReplyDevice(QByteArray trigger, QByteArray reply, int baud)
        : trigger_(std::move(trigger)), reply_(std::move(reply)), baud_(baud) {}
    void receive(const QByteArray &b) override
    {
        if (b.startsWith(trigger_))
            send(reply_);
    }
    int baudRate() const override { return baud_; }
    QString model() const override { return QStringLiteral("fixed"); }

private:
    QByteArray trigger_, reply_;
    int baud_;
};

// Runs f once on the modal window of type W as soon as it shows.
template <class W>
void whenModal(std::function<void(W *)> f)
{
    auto *t = new QTimer;
    QObject::connect(t, &QTimer::timeout, [t, f] {
        if (auto *w = qobject_cast<W *>(QApplication::activeModalWidget())) {
            t->deleteLater();
            t->stop();
            f(w);
        }
    });
    t->start(5);
}
