#include "frmLogsort.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "log/frmLog.h"
#include "log/log_book.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

frmLogsort::frmLogsort(frmLog *log) : QDialog(log), log_(log)
{
    setObjectName(QStringLiteral("frmLogsort"));
    setWindowTitle(QStringLiteral("Select Sort order"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::ApplicationModal);

    static const char *const captions[] = {"Date", "Time", "Frequency", "Organisation", "Language"};
    auto *fraSort = new QGroupBox(tr("Sort by"), this);
    auto *options = new QVBoxLayout(fraSort);
    for (int i = 0; i < 5; ++i) {
        auto *o = new QRadioButton(QString::fromLatin1(captions[i]), fraSort);
        o->setObjectName(QStringLiteral("optSort_%1").arg(i));
        optSort[size_t(i)] = o;
        options->addWidget(o);
    }
    optSort[0]->setChecked(true);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);

    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    buttons->addStretch(1);
    auto *row = new QHBoxLayout(this);
    row->addWidget(fraSort);
    row->addLayout(buttons);
    row->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    nameForAccessibility(this);
}

frmLogsort::~frmLogsort()
{
    if (!unloaded_)
        Form_Unload();
}

void frmLogsort::Form_Load()
{
    placeAtLoad(this, Win::frmLogsort);
    isOpen(Win::frmLogsort) = true;
    frmWelcome::setOpenWindow(Win::frmLogsort, this);
    show();
}

void frmLogsort::Form_Unload()
{
    unloaded_ = true;
    storeAtUnload(this, Win::frmLogsort);
    isOpen(Win::frmLogsort) = false;
    frmWelcome::forgetOpenWindow(Win::frmLogsort, this);
}

void frmLogsort::closeEvent(QCloseEvent *e)
{
    if (!unloaded_)
        Form_Unload();
    e->accept();
}

void frmLogsort::reject() { close(); }

int frmLogsort::choice() const
{
    for (int i = 0; i < 5; ++i)
        if (optSort[size_t(i)]->isChecked())
            return i;
    return 0;
}

void frmLogsort::cmdOK_Click()
{
    frmLog *log = log_;
    const int option = choice();
    close();
    log->setCursor(Qt::WaitCursor);
    logbook::sortLog(logbook::logRecords, logbook::logCount, option);
    log->FillLogGrid();
    log->unsetCursor();
}

void frmLogsort::cmdCancel_Click() { close(); }
