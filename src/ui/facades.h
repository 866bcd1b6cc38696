#pragma once
// Everything a test cannot click through: message and input boxes, the clock, external programs.
// Logic calls these; the program installs the real backends, tests install scripted ones.
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace ui {

// Buttons and icons as the classic message box numbers them.
enum MsgStyle : int {
    vbOKOnly = 0, vbOKCancel = 1, vbAbortRetryIgnore = 2, vbYesNoCancel = 3, vbYesNo = 4,
    vbRetryCancel = 5, vbCritical = 16, vbQuestion = 32, vbExclamation = 48, vbInformation = 64
};
enum MsgResult : int { vbOK = 1, vbCancel = 2, vbAbort = 3, vbRetry = 4, vbIgnore = 5, vbYes = 6, vbNo = 7 };

struct DialogBackend {
    virtual ~DialogBackend() = default;
    virtual int msgBox(const QString &prompt, int style, const QString &title) = 0;
    // Returns the text entered, or an empty string for Cancel.
    virtual QString inputBox(const QString &prompt, const QString &title, const QString &def) = 0;
};

struct ClockBackend {
    virtual ~ClockBackend() = default;
    virtual QDateTime now() = 0; // local time
};

struct ProgramBackend {
    virtual ~ProgramBackend() = default;
    // Starts a program detached; false when it could not be started.
    virtual bool start(const QString &program, const QStringList &args) = 0;
};

int MsgBox(const QString &prompt, int style = vbOKOnly, const QString &title = QString());
QString InputBox(const QString &prompt, const QString &title = QString(), const QString &def = QString());
QDateTime now();
bool startProgram(const QString &program, const QStringList &args = {});

// The backends in force; each install returns the one it replaced.
std::shared_ptr<DialogBackend> installDialogs(std::shared_ptr<DialogBackend> b);
std::shared_ptr<ClockBackend> installClock(std::shared_ptr<ClockBackend> b);
std::shared_ptr<ProgramBackend> installPrograms(std::shared_ptr<ProgramBackend> b);

// The real clock and the real process starter (the message box backend lives with the windows).
std::shared_ptr<ClockBackend> systemClock();
std::shared_ptr<ProgramBackend> systemPrograms();

// --- test mode ---

struct ShownDialog {
    QString kind; // "msgbox" or "inputbox"
    QString prompt;
    QString title;
    int style = 0;
};

// Records what was shown and answers from a script. A dialog the script did not expect
// is recorded as unexpected and answered with OK / Cancel; tests check unexpected() and leftover().
class ScriptedDialogs : public DialogBackend {
public:
    void expectMsgBox(const QString &promptContains, int answer = vbOK);
    void expectInputBox(const QString &promptContains, const QString &answer);
    int msgBox(const QString &prompt, int style, const QString &title) override;
    QString inputBox(const QString &prompt, const QString &title, const QString &def) override;

    QList<ShownDialog> shown;
    QStringList unexpected;   // texts of dialogs that came without an expectation
    QStringList leftover() const; // expectations not used
    void clear();

private:
    struct Expect { QString kind; QString contains; int answer; QString text; };
    QList<Expect> script_;
};

class FixedClock : public ClockBackend {
public:
    explicit FixedClock(QDateTime t) : t_(std::move(t)) {}
    QDateTime now() override { return t_; }
    void set(const QDateTime &t) { t_ = t; }
    void advanceSecs(qint64 s) { t_ = t_.addSecs(s); }

private:
    QDateTime t_;
};

class RecordingPrograms : public ProgramBackend {
public:
    bool start(const QString &program, const QStringList &args) override;
    QList<QStringList> started; // program followed by its arguments
    bool result = true;
};

} // namespace ui
