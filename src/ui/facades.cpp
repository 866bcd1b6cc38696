#include "facades.h"

#include <QProcess>

namespace ui {

namespace {
struct NullDialogs : DialogBackend {
    // Without a backend a dialog is a programming error in tests; answer harmlessly.
    int msgBox(const QString &, int, const QString &) override { return vbOK; }
    QString inputBox(const QString &, const QString &, const QString &) override { return {}; }
};

struct SystemClock : ClockBackend {
    QDateTime now() override { return QDateTime::currentDateTime(); }
};

struct SystemPrograms : ProgramBackend {
    bool start(const QString &program, const QStringList &args) override
    {
        return QProcess::startDetached(program, args);
    }
};

std::shared_ptr<DialogBackend> &dialogs()
{
    static std::shared_ptr<DialogBackend> d = std::make_shared<NullDialogs>();
    return d;
}
std::shared_ptr<ClockBackend> &clock()
{
    static std::shared_ptr<ClockBackend> c = std::make_shared<SystemClock>();
    return c;
}
std::shared_ptr<ProgramBackend> &programs()
{
    static std::shared_ptr<ProgramBackend> p = std::make_shared<SystemPrograms>();
    return p;
}
} // namespace

int MsgBox(const QString &prompt, int style, const QString &title)
{
    auto d = dialogs(); // keep alive should the handler swap backends
    return d->msgBox(prompt, style, title);
}

QString InputBox(const QString &prompt, const QString &title, const QString &def)
{
    auto d = dialogs();
    return d->inputBox(prompt, title, def);
}

QDateTime now() { return clock()->now(); }

bool startProgram(const QString &program, const QStringList &args)
{
    return programs()->start(program, args);
}

std::shared_ptr<DialogBackend> installDialogs(std::shared_ptr<DialogBackend> b)
{
    std::swap(dialogs(), b);
    return b;
}
std::shared_ptr<ClockBackend> installClock(std::shared_ptr<ClockBackend> b)
{
    std::swap(clock(), b);
    return b;
}
std::shared_ptr<ProgramBackend> installPrograms(std::shared_ptr<ProgramBackend> b)
{
    std::swap(programs(), b);
    return b;
}

std::shared_ptr<ClockBackend> systemClock() { return std::make_shared<SystemClock>(); }
std::shared_ptr<ProgramBackend> systemPrograms() { return std::make_shared<SystemPrograms>(); }

void ScriptedDialogs::expectMsgBox(const QString &promptContains, int answer)
{
    script_.append({QStringLiteral("msgbox"), promptContains, answer, {}});
}

void ScriptedDialogs::expectInputBox(const QString &promptContains, const QString &answer)
{
    script_.append({QStringLiteral("inputbox"), promptContains, 0, answer});
}

int ScriptedDialogs::msgBox(const QString &prompt, int style, const QString &title)
{
    shown.append({QStringLiteral("msgbox"), prompt, title, style});
    if (!script_.isEmpty() && script_.first().kind == u"msgbox" && prompt.contains(script_.first().contains)) {
        return script_.takeFirst().answer;
    }
    unexpected << QStringLiteral("msgbox [%1] %2").arg(title, prompt);
    return vbOK;
}

QString ScriptedDialogs::inputBox(const QString &prompt, const QString &title, const QString &)
{
    shown.append({QStringLiteral("inputbox"), prompt, title, 0});
    if (!script_.isEmpty() && script_.first().kind == u"inputbox" && prompt.contains(script_.first().contains))
        return script_.takeFirst().text;
    unexpected << QStringLiteral("inputbox [%1] %2").arg(title, prompt);
    return {};
}

QStringList ScriptedDialogs::leftover() const
{
    QStringList out;
    for (const auto &e : script_)
        out << e.kind + QStringLiteral(": ") + e.contains;
    return out;
}

void ScriptedDialogs::clear()
{
    shown.clear();
    unexpected.clear();
    script_.clear();
}

bool RecordingPrograms::start(const QString &program, const QStringList &args)
{
    started.append(QStringList{program} + args);
    return result;
}

} // namespace ui
