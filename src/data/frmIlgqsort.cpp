#include "frmIlgqsort.h"
#include "core/shared_state.h"
#include "data/ftl_query.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

int frmIlgqsort::sortOption = 0;

frmIlgqsort::frmIlgqsort(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmIlgqsort"));
    setWindowTitle(QStringLiteral("Select sort order"));
    setModal(true);
    auto *fra = new QGroupBox(QStringLiteral("Select sort order"), this);
    fra->setObjectName(QStringLiteral("fraSort"));
    auto *opts = new QVBoxLayout(fra);
    static const char *const captions[] = {"Frequency", "Start time", "Organisation", "Language"};
    for (int i = 0; i < 4; ++i) {
        optSort[size_t(i)] = new QRadioButton(QLatin1String(captions[i]), fra);
        optSort[size_t(i)]->setObjectName(QStringLiteral("optSort_%1").arg(i));
        opts->addWidget(optSort[size_t(i)]);
        connect(optSort[size_t(i)], &QRadioButton::clicked, this, [this, i] { optSort_Click(i); });
    }
    optSort[size_t(sortOption)]->setChecked(true);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *col = new QVBoxLayout(this);
    col->addWidget(fra);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);
    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { close(); });
    nameForAccessibility(this);
    isOpen(Win::frmIlgqsort) = false;
    placeAtLoad(this, Win::frmIlgqsort);
    isOpen(Win::frmIlgqsort) = true;
}

frmIlgqsort::~frmIlgqsort() { isOpen(Win::frmIlgqsort) = false; }

void frmIlgqsort::optSort_Click(int index) { sortOption = index; }

void frmIlgqsort::cmdOK_Click()
{
    ftlquery::SortIlgList(sortOption);
    sorted_ = true;
    close();
}

void frmIlgqsort::closeEvent(QCloseEvent *e)
{
    if (isOpen(Win::frmIlgqsort))
        storeAtUnload(this, Win::frmIlgqsort);
    isOpen(Win::frmIlgqsort) = false;
    e->accept();
    QDialog::closeEvent(e);
}
