#include "frmLoadfile.h"
#include "core/frmWelcome.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

frmLoadfile::frmLoadfile(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmLoadfile"));
    setWindowTitle(QStringLiteral("Select file to load"));
    setModal(true);

    list = new QListWidget(this);
    list->setObjectName(QStringLiteral("list"));
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setMinimumSize(260, 220);
    list->setAccessibleName(QStringLiteral("Files"));

    auto button = [this](const char *name, const QString &caption) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdOK = button("cmdOK", QStringLiteral("OK"));
    cmdCancel = button("cmdCancel", QStringLiteral("Cancel"));
    cmdEdit = button("cmdEdit", QStringLiteral("Edit"));
    cmdDelete = button("cmdDelete", QStringLiteral("Delete"));
    cmdOK->setDefault(true);

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    buttons->addSpacing(16);
    buttons->addWidget(cmdEdit);
    buttons->addWidget(cmdDelete);
    buttons->addStretch(1);
    auto *main = new QHBoxLayout(this);
    main->addWidget(list, 1);
    main->addLayout(buttons);

    connect(cmdOK, &QPushButton::clicked, this, &frmLoadfile::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmLoadfile::cmdCancel_Click);
    connect(cmdEdit, &QPushButton::clicked, this, &frmLoadfile::cmdEdit_Click);
    connect(cmdDelete, &QPushButton::clicked, this, &frmLoadfile::cmdDelete_Click);
    connect(list, &QListWidget::currentRowChanged, this, &frmLoadfile::list_Click);
    connect(list, &QListWidget::itemClicked, this, &frmLoadfile::list_Click);
    connect(list, &QListWidget::itemDoubleClicked, this, &frmLoadfile::list_DblClick);
    nameForAccessibility(this);
}

void frmLoadfile::showModal(QWidget *parent)
{
    frmLoadfile f(parent);
    f.Form_Load();
    if (!f.unloaded_)
        f.exec();
}

void frmLoadfile::Form_Load()
{
    placeAtLoad(this, Win::frmLoadfile);
    isOpen(Win::frmLoadfile) = true;
    preparePattern(fileType);
    const QStringList names = listKindFiles(fileType);
    list->clear();
    // Shown as the file system names them; chosen as settings text.
    for (const QString &n : names) {
        auto *item = new QListWidgetItem(paths::fromSettingsText(n), list);
        item->setData(Qt::UserRole, n);
    }
    if (list->count() > 0)
        list->setCurrentRow(0);
    isOpen(Win::frmLoadfile) = true;
}

void frmLoadfile::Form_Unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    unsetCursor();
    storeAtUnload(this, Win::frmLoadfile);
    isOpen(Win::frmLoadfile) = false;
    QDialog::done(QDialog::Accepted);
}

void frmLoadfile::closeEvent(QCloseEvent *e)
{
    Form_Unload();
    e->accept();
}

void frmLoadfile::reject() { Form_Unload(); }

void frmLoadfile::list_Click()
{
    if (QListWidgetItem *it = list->currentItem())
        chosenFileTable[fileType] = it->data(Qt::UserRole).toString();
}

void frmLoadfile::list_DblClick()
{
    list_Click();
    cmdOK_Click();
}

void frmLoadfile::cmdOK_Click()
{
    setCursor(Qt::WaitCursor);
    if (frmWelcome *w = frmWelcome::instance())
        w->Update4RxFreq();
    if (rxType == rxNRD535)
        dialActive = false;
    if (rxType == rxRX320 && isOpen(Win::frmTracking))
        if (QWidget *t = frmWelcome::openWindow(Win::frmTracking))
            if (auto *opt = t->findChild<QWidget *>(QStringLiteral("optMousedial_1")))
                opt->setEnabled(false);
    const QString name = fileType >= 1 && fileType <= kFileKinds ? chosenFileTable[fileType] : QString();
    if (!name.isEmpty()) {
        if (fileType == kMemFileKind) {
            const int answer = ui::MsgBox(QStringLiteral("Are sure you want to load the file\n") + name
                                              + QStringLiteral(" in the MemMan Window\nand overwrite possible current data"),
                                          ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Load Memory File"));
            if (answer == ui::vbYes)
                runReader();
        } else {
            runReader();
        }
    }
    unsetCursor();
    Form_Unload();
}

void frmLoadfile::cmdCancel_Click() { Form_Unload(); }

void frmLoadfile::cmdEdit_Click()
{
    const QString name = chosenFileTable[fileType];
    if (name.isEmpty())
        return;
    startEditor(fullDirTable[fileType] + name);
}

void frmLoadfile::cmdDelete_Click()
{
    const QString name = chosenFileTable[fileType];
    if (name.isEmpty())
        return;
    const int answer = ui::MsgBox(QStringLiteral("         Are you really sure you\n"
                                                 "         want to delete the file\n         ")
                                      + name + QStringLiteral("  ? ? ?"),
                                  ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Delete file"));
    // The list keeps the dead name until the window is opened again.
    if (answer == ui::vbYes)
        killFile(fullDirTable[fileType] + name);
}
