#pragma once
// Shared helpers for tests: scripted dialogs, a fixed clock, a temporary data directory.
#include "ui/facades.h"

#include <QTemporaryDir>
#include <functional>
#include <memory>

// Installs scripted dialogs, a fixed clock and recording programs for one test case, and
// resets the shared block; restores the previous backends when it goes.
class TestEnv {
public:
    TestEnv();
    ~TestEnv();
    std::shared_ptr<ui::ScriptedDialogs> dialogs;
    std::shared_ptr<ui::FixedClock> clock;
    std::shared_ptr<ui::RecordingPrograms> programs;
    // For tests against a real line, where the simulator on the far side runs on real time.
    void installSystemClock();
    // Fails the current test if a dialog came unexpected or an expected one never came.
    bool dialogsClean(QString *why = nullptr) const;

private:
    std::shared_ptr<ui::DialogBackend> oldDialogs_;
    std::shared_ptr<ui::ClockBackend> oldClock_;
    std::shared_ptr<ui::ProgramBackend> oldPrograms_;
};

#define VERIFY_DIALOGS_CLEAN(env) \
    do { QString why_; QVERIFY2((env).dialogsClean(&why_), qPrintable(why_)); } while (0)

// Writes bytes to dir/name, creating folders on the way.
void writeFile(const QString &path, const QByteArray &bytes);
QByteArray readFile(const QString &path);

// The run-time error number that f raises, 0 when it raises none.
int errorOf(const std::function<void()> &f);
