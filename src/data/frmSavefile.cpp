#include "frmSavefile.h"
#include "core/paths.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const QString kSaveError = QStringLiteral("Something went wrong while\nsaving your data to a file ! ! !\nPLEASE TRY AGAIN");

void saveError(const QString &title) { ui::MsgBox(kSaveError, ui::vbExclamation, title); }

void saveError(const QString &title, const RuntimeError &e)
{
    ui::MsgBox(kSaveError + QStringLiteral("\n\n%1 (run-time error %2)").arg(e.text()).arg(e.number()),
               ui::vbExclamation, title);
}
} // namespace

frmSavefile::frmSavefile(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSavefile"));
    setWindowTitle(QStringLiteral("Select Save Filename"));
    setModal(true);

    cmbSavefile = new QComboBox(this);
    cmbSavefile->setObjectName(QStringLiteral("cmbSavefile"));
    cmbSavefile->setEditable(true);
    cmbSavefile->setInsertPolicy(QComboBox::NoInsert);
    cmbSavefile->setMaxVisibleItems(16);
    cmbSavefile->setMinimumWidth(300);
    // Names are compared as typed: no completion that could change their case.
    cmbSavefile->setCompleter(nullptr);

    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *caption = new QLabel(QStringLiteral("File name:"), this);
    caption->setBuddy(cmbSavefile);
    auto *main = new QVBoxLayout(this);
    main->addWidget(caption);
    main->addWidget(cmbSavefile);
    main->addSpacing(12);
    main->addLayout(buttons);

    connect(cmdOK, &QPushButton::clicked, this, &frmSavefile::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSavefile::cmdCancel_Click);
    nameForAccessibility(this);
}

void frmSavefile::showModal(QWidget *parent)
{
    frmSavefile f(parent);
    f.Form_Load();
    if (!f.unloaded_)
        f.exec();
}

void frmSavefile::Form_Load()
{
    placeAtLoad(this, Win::frmSavefile);
    isOpen(Win::frmSavefile) = true;
    cmbSavefile->clear();
    const QStringList names = dirFiles(fullDirTable[fileType]);
    prepareDefaultName(fileType);
    for (const QString &n : names)
        cmbSavefile->addItem(paths::fromSettingsText(n).toLower());
    // The listing loop adds once more after the last name: the list ends with an empty entry.
    cmbSavefile->addItem(QString());
    cmbSavefile->setCurrentIndex(-1);
    cmbSavefile->setEditText(defaultNameTable[fileType]);
    // The offered name is a placeholder: typing replaces it at once.
    cmbSavefile->lineEdit()->selectAll();
    cmbSavefile->setFocus();
}

void frmSavefile::Form_Unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    storeAtUnload(this, Win::frmSavefile);
    isOpen(Win::frmSavefile) = false;
    QDialog::done(QDialog::Accepted);
}

void frmSavefile::closeEvent(QCloseEvent *e)
{
    Form_Unload();
    e->accept();
}

void frmSavefile::reject() { Form_Unload(); }

void frmSavefile::cmdCancel_Click() { Form_Unload(); }

void frmSavefile::cmdOK_Click()
{
    const QString name = cmbSavefile->currentText();
    // The name as typed, kept as settings text: the bytes the file system will give it.
    chosenFileTable[fileType] = paths::toSettingsText(name);
    if (!isValidSaveName(name, fileType)) {
        saveError(QStringLiteral("Error 2"));
        Form_Unload();
        return;
    }
    if (fileType != kRttyFileKind) {
        bool mayWrite = false;
        CheckExistingFile(mayWrite, true);
        if (!mayWrite) {
            saveError(QStringLiteral("Error 1"));
            Form_Unload();
            return;
        }
    }
    try {
        runWriter();
    } catch (const RuntimeError &e) {
        // A save that failed is told with its reason, and the old file stands as it was.
        if (!textfile::isWriteFailure(e))
            throw;
        saveError(QStringLiteral("Save File"), e);
        Form_Unload();
        return;
    }
    Form_Unload();
    if (fileType != 7 && fileType != kRttyFileKind)
        ui::MsgBox(QStringLiteral("The data is now saved\nto the file ") + name, ui::vbExclamation,
                   QStringLiteral("Save File"));
}
