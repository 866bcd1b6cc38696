#include "frmLogFormat.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "log/frmLog.h"
#include "ui/widgets/form_position.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace logbook;

frmLogFormat::frmLogFormat(frmLog *log) : QDialog(log), log_(log)
{
    setObjectName(QStringLiteral("frmLogFormat"));
    setWindowTitle(QStringLiteral("Log Screen Format"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::ApplicationModal);

    auto *boxes = new QGridLayout;
    for (int n = 0; n < kFields; ++n) {
        auto *c = new QCheckBox(QString::fromLatin1(kFieldSpecs[size_t(n)].checkBox), this);
        c->setObjectName(QStringLiteral("chkLogformat_%1").arg(n));
        chkLogformat[size_t(n)] = c;
        // Three columns of five, read down.
        boxes->addWidget(c, n % 5, n / 5);
        connect(c, &QCheckBox::clicked, this, [this, n] { chkLogformat_Click(n); });
    }
    lblFormatlength = new QLabel(QStringLiteral("Format Length"), this);
    lblFormatlength->setObjectName(QStringLiteral("lblFormatlength"));
    lblLoglength = new QLabel(this);
    lblLoglength->setObjectName(QStringLiteral("lblLoglength"));
    lblLoglength->setFrameShape(QFrame::StyledPanel);
    lblLoglength->setFrameShadow(QFrame::Sunken);
    lblLoglength->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblLoglength->setMinimumWidth(lblLoglength->fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 10);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setAutoDefault(false);
    cmdSave = new QPushButton(QStringLiteral("Save"), this);
    cmdSave->setObjectName(QStringLiteral("cmdSave"));
    cmdSave->setAutoDefault(false);
    cmdSave->setToolTip(tr("Keep this format for the next runs"));

    auto *bottom = new QHBoxLayout;
    bottom->addWidget(lblFormatlength);
    bottom->addWidget(lblLoglength);
    bottom->addStretch(1);
    bottom->addWidget(cmdOK);
    bottom->addWidget(cmdSave);
    auto *col = new QVBoxLayout(this);
    col->addLayout(boxes);
    col->addSpacing(8);
    col->addLayout(bottom);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { cmdSave_Click(); });
    nameForAccessibility(this);
}

frmLogFormat::~frmLogFormat()
{
    if (!unloaded_)
        Form_Unload();
}

void frmLogFormat::Form_Load()
{
    placeAtLoad(this, Win::frmLogFormat);
    for (int n = 0; n < kFields; ++n)
        chkLogformat[size_t(n)]->setChecked(shows(logMask, n));
    showLength();
    isOpen(Win::frmLogFormat) = true;
    frmWelcome::setOpenWindow(Win::frmLogFormat, this);
    show();
}

void frmLogFormat::Form_Unload()
{
    unloaded_ = true;
    storeAtUnload(this, Win::frmLogFormat);
    isOpen(Win::frmLogFormat) = false;
    frmWelcome::forgetOpenWindow(Win::frmLogFormat, this);
}

void frmLogFormat::closeEvent(QCloseEvent *e)
{
    if (!unloaded_)
        Form_Unload();
    e->accept();
}

void frmLogFormat::showLength() { lblLoglength->setText(QString::number(formatLength(logMask))); }

void frmLogFormat::chkLogformat_Click(int n)
{
    // A short mask hides what it lacks: it grows hidden fields before this one changes.
    if (logMask.size() <= n)
        logMask = logMask.leftJustified(n + 1, u'0');
    logMask[n] = chkLogformat[size_t(n)]->isChecked() ? u'1' : u'0';
    showLength();
}

void frmLogFormat::cmdOK_Click()
{
    frmLog *log = log_;
    close();
    log->BuildLogColumns();
    log->FillLogGrid();
}

void frmLogFormat::cmdSave_Click() { saveMask(dirPath); }
void frmLogFormat::reject() { close(); }
