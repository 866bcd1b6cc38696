#include "dialogs_qt.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace ui {
namespace {
const QString kReadableText = QStringLiteral("QLabel { color: palette(window-text); background: transparent; }"
                                             "QLineEdit { color: palette(text); background: palette(base); }");

struct ScreenDialogs : DialogBackend {
    int msgBox(const QString &prompt, int style, const QString &title) override
    {
        QMessageBox box(QApplication::activeWindow());
        // A window's own style (the panels' light text for a dark face) must not reach the box's
        // light face: its texts keep the colours of the box's own palette.
        box.setStyleSheet(kReadableText);
        box.setText(prompt);
        box.setWindowTitle(title.isEmpty() ? QStringLiteral("Brelvox") : title);
        switch (style & 0x70) {
        case vbCritical: box.setIcon(QMessageBox::Critical); break;
        case vbQuestion: box.setIcon(QMessageBox::Question); break;
        case vbExclamation: box.setIcon(QMessageBox::Warning); break;
        case vbInformation: box.setIcon(QMessageBox::Information); break;
        default: break;
        }
        struct B { QMessageBox::StandardButton b; int result; };
        QList<B> buttons;
        switch (style & 0x7) {
        case vbOKCancel: buttons = {{QMessageBox::Ok, vbOK}, {QMessageBox::Cancel, vbCancel}}; break;
        case vbAbortRetryIgnore:
            buttons = {{QMessageBox::Abort, vbAbort}, {QMessageBox::Retry, vbRetry}, {QMessageBox::Ignore, vbIgnore}};
            break;
        case vbYesNoCancel:
            buttons = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}, {QMessageBox::Cancel, vbCancel}};
            break;
        case vbYesNo: buttons = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}}; break;
        case vbRetryCancel: buttons = {{QMessageBox::Retry, vbRetry}, {QMessageBox::Cancel, vbCancel}}; break;
        default: buttons = {{QMessageBox::Ok, vbOK}}; break;
        }
        QMessageBox::StandardButtons set;
        for (const B &b : buttons)
            set |= b.b;
        box.setStandardButtons(set);
        box.setDefaultButton(buttons.first().b);
        const int clicked = box.exec();
        for (const B &b : buttons)
            if (clicked == b.b)
                return b.result;
        // Escape or the close box: the last button of a set with Cancel, else the first.
        return (style & 0x7) == vbYesNo ? vbNo : buttons.last().result;
    }

    QString inputBox(const QString &prompt, const QString &title, const QString &def) override
    {
        QInputDialog box(QApplication::activeWindow());
        box.setStyleSheet(kReadableText);
        box.setWindowTitle(title.isEmpty() ? QStringLiteral("Brelvox") : title);
        box.setLabelText(prompt);
        box.setTextValue(def);
        return box.exec() == QDialog::Accepted ? box.textValue() : QString();
    }
};
} // namespace

std::shared_ptr<DialogBackend> screenDialogs() { return std::make_shared<ScreenDialogs>(); }
} // namespace ui
