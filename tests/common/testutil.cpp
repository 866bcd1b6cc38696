#include "testutil.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "memory/mem_file.h"
#include "serial/comm_line.h"
#include "serial/sim_backend.h"

#include <QDir>
#include <QTest>
#include <QFile>
#include <QFileInfo>

TestEnv::TestEnv()
    : dialogs(std::make_shared<ui::ScriptedDialogs>()),
      clock(std::make_shared<ui::FixedClock>(QDateTime(QDate(2026, 3, 14), QTime(12, 0)))),
      programs(std::make_shared<ui::RecordingPrograms>()),
      printer(std::make_shared<ui::PdfPrinter>())
{
    oldDialogs_ = ui::installDialogs(dialogs);
    oldClock_ = ui::installClock(clock);
    oldPrograms_ = ui::installPrograms(programs);
    oldPrinter_ = ui::installPrinter(printer);
    resetSharedState();
    resetFileStore();
    setMemFileView(nullptr);
}

TestEnv::~TestEnv()
{
    // A dialog nobody expected, or an expected one that never came, fails the test that made it.
    QString why;
    if (!dialogsClean(&why) && !QTest::currentTestFailed())
        QTest::qFail(qPrintable("dialogs: " + why), __FILE__, __LINE__);
    ui::installDialogs(oldDialogs_);
    ui::installClock(oldClock_);
    ui::installPrograms(oldPrograms_);
    ui::installPrinter(oldPrinter_);
}

void TestEnv::installSystemClock() { ui::installClock(ui::systemClock()); }

bool TestEnv::dialogsClean(QString *why) const
{
    QStringList problems;
    for (const auto &u : dialogs->unexpected)
        problems << "unexpected " + u;
    for (const auto &l : dialogs->leftover())
        problems << "never shown " + l;
    if (why)
        *why = problems.join("; ");
    return problems.isEmpty();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (f.open(QIODevice::WriteOnly))
        f.write(bytes);
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

int errorOf(const std::function<void()> &f)
{
    try {
        f();
    } catch (const RuntimeError &e) {
        return e.number();
    }
    return 0;
}

SimBackend *openOnSim(CommLine &comm, std::unique_ptr<SimDevice> device, const QString &settings)
{
    auto b = std::make_unique<SimBackend>(std::move(device));
    b->open(parseSettings(settings), nullptr);
    SimBackend *line = b.get();
    comm.openWith(std::move(b));
    return line;
}
