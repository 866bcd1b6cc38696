#pragma once
// The end of the program on a fatal run-time error: the error is shown in a message box
// and the process ends with a non-zero exit code.
#include "runtime_error.h"

#include <functional>

// "Run-time error '53':\n\nFile not found"
QString runtimeErrorText(const RuntimeError &e);
// Shows the error and ends the process (through the exit hook, std::exit by default).
void fatalRuntimeError(const RuntimeError &e);
// Tests replace the way the process ends; returns the hook it replaced.
std::function<void(int)> setFatalExit(std::function<void(int)> f);
constexpr int kFatalExitCode = 3;
