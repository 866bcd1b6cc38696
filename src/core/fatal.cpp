#include "fatal.h"
#include "ui/facades.h"

#include <cstdlib>

namespace {
std::function<void(int)> &exitHook()
{
    static std::function<void(int)> f = [](int code) { std::exit(code); };
    return f;
}
} // namespace

QString runtimeErrorText(const RuntimeError &e)
{
    return QStringLiteral("Run-time error '%1':\n\n%2").arg(e.number()).arg(e.text());
}

void fatalRuntimeError(const RuntimeError &e)
{
    ui::MsgBox(runtimeErrorText(e), ui::vbCritical, QStringLiteral("Brelvox"));
    exitHook()(kFatalExitCode);
}

std::function<void(int)> setFatalExit(std::function<void(int)> f)
{
    std::swap(exitHook(), f);
    return f;
}
