// Brelvox: the start window reads its settings from the current directory and takes it from there.
#include "core/fatal.h"
#include "core/frmWelcome.h"
#include "ui/dialogs_qt.h"
#include "ui/facades.h"
#include "ui/printing_qt.h"

#include <QApplication>

namespace {
// Fatal run-time errors leave any handler and end the program here, with their message.
class BrelvoxApplication : public QApplication {
public:
    using QApplication::QApplication;
    bool notify(QObject *receiver, QEvent *event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const RuntimeError &e) {
            fatalRuntimeError(e);
        }
        return false;
    }
};
} // namespace

int main(int argc, char **argv)
{
    BrelvoxApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Brelvox"));
    ui::installDialogs(ui::screenDialogs());
    ui::installPrinter(std::make_shared<ui::SystemPrinter>());
    frmWelcome welcome;
    try {
        welcome.Form_Load();
    } catch (const RuntimeError &e) {
        fatalRuntimeError(e);
        return kFatalExitCode;
    }
    return app.exec();
}
