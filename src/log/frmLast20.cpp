#include "frmLast20.h"
#include "ui/widgets/raise_or_load.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "log/small_lists.h"
#include "log/small_lists_qt.h"
#include "ui/widgets/form_position.h"
#include "ui/widgets/text_grid.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QPointer<frmLast20> theLast20;
}

frmLast20::frmLast20(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmLast20"));
    setWindowTitle(QStringLiteral("Last 20 Freqs"));
    setAttribute(Qt::WA_DeleteOnClose);
    const smallwin::ListGrids g = smallwin::makeListGrids(this, "grdLast20");
    grdTitles = g.titles;
    grdLast20 = g.list;
    chkNofreqsteps = new QCheckBox(QStringLiteral("Ignore Freq steps"), this);
    chkNofreqsteps->setObjectName(QStringLiteral("chkNofreqsteps"));
    chkNofreqsteps->setToolTip(tr("Frequency steps of the panel (spin button, arrow keys, wheel) are not recorded"));
    cmdClear = new QPushButton(QStringLiteral("Cls"), this);
    cmdClear->setObjectName(QStringLiteral("cmdClear"));
    cmdClear->setToolTip(tr("Empty the list"));
    cmdExit = new QPushButton(QStringLiteral("Hide"), this);
    cmdExit->setObjectName(QStringLiteral("cmdExit"));
    cmdExit->setToolTip(tr("Hide the window; it goes on recording"));
    for (QPushButton *b : {cmdClear, cmdExit})
        b->setAutoDefault(false);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdClear);
    buttons->addStretch(1);
    buttons->addWidget(cmdExit);
    auto *col = new QVBoxLayout(this);
    col->setSpacing(0);
    col->addWidget(grdTitles);
    col->addWidget(grdLast20);
    col->addSpacing(6);
    col->addWidget(chkNofreqsteps);
    col->addSpacing(4);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(grdLast20, &TextGrid::cellClicked, this,
            guarded<int, int, const QString &>(guard_, [this](int row, int, const QString &) { grdLast20_Click(row); }));
    connect(cmdClear, &QPushButton::clicked, this, guarded(guard_, [this] { cmdClear_Click(); }));
    connect(cmdExit, &QPushButton::clicked, this, guarded(guard_, [this] { cmdExit_Click(); }));
    nameForAccessibility(this);
}

frmLast20::~frmLast20()
{
    // Gone without its unload (the program ending): the hub must not call it.
    if (hooked_)
        if (frmWelcome *w = frmWelcome::instance()) {
            w->hub.last20Add = nullptr;
            w->hub.last20IgnoresSteps = nullptr;
        }
    frmWelcome::forgetOpenWindow(Win::frmLast20, this);
}

frmLast20 *frmLast20::open()
{
    return raiseOrLoad(theLast20, [](const frmLast20 &) { return isOpen(Win::frmLast20); });
}

void frmLast20::Form_Load()
{
    placeAtLoad(this, Win::frmLast20);
    smallwin::fillListGrid(grdLast20, smalllists::last20Freqs);
    if (frmWelcome *w = frmWelcome::instance()) {
        QPointer<frmLast20> self(this);
        w->hub.last20Add = [self](const QString &text) {
            if (self)
                self->fillgrdlast20(text);
        };
        w->hub.last20IgnoresSteps = [self] { return self && self->chkNofreqsteps->isChecked(); };
        hooked_ = true;
    }
    show();
    isOpen(Win::frmLast20) = true;
    frmWelcome::setOpenWindow(Win::frmLast20, this);
}

void frmLast20::Form_Unload()
{
    storeAtUnload(this, Win::frmLast20);
    if (hooked_)
        if (frmWelcome *w = frmWelcome::instance()) {
            w->hub.last20Add = nullptr;
            w->hub.last20IgnoresSteps = nullptr;
        }
    hooked_ = false;
    isOpen(Win::frmLast20) = false;
    frmWelcome::forgetOpenWindow(Win::frmLast20, this);
}

void frmLast20::fillgrdlast20(const QString &text)
{
    smalllists::shiftIn(smalllists::last20Freqs, text);
    smallwin::fillListGrid(grdLast20, smalllists::last20Freqs);
}

void frmLast20::grdLast20_Click(int row)
{
    if (row < 0)
        return;
    double f = numtext::Val(grdLast20->text(row, 1));
    if (frmWelcome *w = frmWelcome::instance())
        w->Change2FreqA(f);
}

void frmLast20::cmdClear_Click()
{
    smalllists::last20Freqs.fill(QString());
    grdLast20->rows()->clear();
}

void frmLast20::cmdExit_Click() { hide(); }

void frmLast20::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    Form_Unload();
    e->accept();
}
