#include "frmConvertILG.h"
#include "ui/widgets/raise_or_load.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/frmILGfinddbf.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
QPointer<frmConvertILG> theConverter;

struct Connection { const char *source; const char *file; const char *connected; };
const Connection kConnections[3] = {
    {"", "", ""},
    {"ILGADATA", "ILGADATA.FTL", "ILGRadio LW/MW database connected, conversion can be started."},
    {"ILGSDATA", "ILGSDATA.FTL", "ILGRadio SW database connected, conversion can be started."}};
} // namespace

frmConvertILG::frmConvertILG(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmConvertILG"));
    setWindowTitle(QStringLiteral("ILGRadio tables to FTL files"));
    setAttribute(Qt::WA_DeleteOnClose);
    build();
}

frmConvertILG::~frmConvertILG()
{
    isOpen(Win::frmConvertILG) = false;
    frmWelcome::forgetOpenWindow(Win::frmConvertILG, this);
}

frmConvertILG *frmConvertILG::open() { return raiseOrLoad(theConverter); }

frmConvertILG *frmConvertILG::openWindow() { return theConverter; }

void frmConvertILG::build()
{
    lblTitle = new QLabel(QStringLiteral("ILGRadio Database Conversion"), this);
    lblTitle->setObjectName(QStringLiteral("lblTitle"));
    QFont big = lblTitle->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    lblTitle->setFont(big);
    lblTitle->setAlignment(Qt::AlignCenter);

    auto button = [this](const char *name, const QString &caption) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdLocate = button("cmdLocate", QStringLiteral("Locate ILG *.dbf files"));
    cmdConvert = button("cmdConvert", QStringLiteral("Convert"));
    cmdStop = button("cmdStop", QStringLiteral("Stop"));
    cmdExit = button("cmdExit", QStringLiteral("Exit conversion"));

    fraConnect = new QGroupBox(this);
    fraConnect->setObjectName(QStringLiteral("fraConnect"));
    auto *connectBox = new QVBoxLayout(fraConnect);
    auto *group = new QButtonGroup(this);
    const char *captions[3] = {"No db connected", "Connect to ILG MW db", "Connect to ILG SW db"};
    for (int i = 0; i < 3; ++i) {
        optDbconnect[size_t(i)] = new QRadioButton(QLatin1String(captions[i]), fraConnect);
        optDbconnect[size_t(i)]->setObjectName(QStringLiteral("optDbconnect_%1").arg(i));
        group->addButton(optDbconnect[size_t(i)], i);
        connectBox->addWidget(optDbconnect[size_t(i)]);
        connect(optDbconnect[size_t(i)], &QRadioButton::clicked, this, guarded(guard_, [this, i] { optDbconnect_Click(i); }));
    }

    fraInclude = new QGroupBox(this);
    fraInclude->setObjectName(QStringLiteral("fraInclude"));
    auto *includeBox = new QVBoxLayout(fraInclude);
    const char *includes[4] = {"Include Estimated (E)", "Include Inactive    (I)", "Include Not Conf. (N)",
                               "Include Planned   (P) "};
    for (int i = 0; i < 4; ++i) {
        chkInclude[size_t(i)] = new QCheckBox(QLatin1String(includes[i]), fraInclude);
        chkInclude[size_t(i)]->setObjectName(QStringLiteral("chkInclude_%1").arg(i));
        includeBox->addWidget(chkInclude[size_t(i)]);
    }

    datILG = new QLineEdit(this);
    datILG->setObjectName(QStringLiteral("datILG"));
    datILG->setReadOnly(true);
    datILG->setAccessibleName(tr("Connected table"));
    datILG->setToolTip(tr("The table that is connected"));

    lblConvert = new QLabel(QStringLiteral("Converted records :"), this);
    lblConvert->setObjectName(QStringLiteral("lblConvert"));
    lblRecnum = new QLabel(this);
    lblRecnum->setObjectName(QStringLiteral("lblRecnum"));
    lblRecnum->setMinimumWidth(80);
    lblRecord = new QLabel(this);
    lblRecord->setObjectName(QStringLiteral("lblRecord"));
    QFont fixed(QStringLiteral("Monospace"));
    fixed.setStyleHint(QFont::TypeWriter);
    lblRecord->setFont(fixed);
    lblRecord->setMinimumWidth(QFontMetrics(fixed).horizontalAdvance(QString(77, QLatin1Char('0'))) + 8);
    lblRecord->setFrameShape(QFrame::StyledPanel);
    lblRecord->setMinimumHeight(QFontMetrics(fixed).height() + 8);

    auto *frames = new QHBoxLayout;
    auto *leftCol = new QVBoxLayout;
    leftCol->addWidget(cmdLocate);
    leftCol->addWidget(fraConnect);
    leftCol->addWidget(datILG);
    frames->addLayout(leftCol);
    frames->addWidget(fraInclude);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdConvert);
    buttons->addWidget(cmdStop);
    buttons->addStretch(1);
    buttons->addWidget(cmdExit);
    frames->addLayout(buttons);
    auto *count = new QHBoxLayout;
    count->addWidget(lblConvert);
    count->addWidget(lblRecnum);
    count->addStretch(1);
    auto *col = new QVBoxLayout(this);
    col->addWidget(lblTitle);
    col->addLayout(frames);
    col->addLayout(count);
    col->addWidget(lblRecord);
    col->setSizeConstraint(QLayout::SetFixedSize);

    const std::pair<QPushButton *, void (frmConvertILG::*)()> handlers[] = {
        {cmdLocate, &frmConvertILG::cmdLocate_Click}, {cmdConvert, &frmConvertILG::cmdConvert_Click},
        {cmdStop, &frmConvertILG::cmdStop_Click}, {cmdExit, &frmConvertILG::cmdExit_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    nameForAccessibility(this);
}

void frmConvertILG::Form_Load()
{
    placeAtLoad(this, Win::frmConvertILG);
    fileConvertKind = 1;
    fraConnect->setEnabled(false);
    optDbconnect[0]->setChecked(true);
    disconnectTable();
    show();
    isOpen(Win::frmConvertILG) = true;
    frmWelcome::setOpenWindow(Win::frmConvertILG, this);
}

void frmConvertILG::disconnectTable()
{
    table_.reset();
    recordSource_.clear();
    datILG->clear();
    datILG->setEnabled(false);
    cmdConvert->setEnabled(false);
    lblRecnum->clear();
    lblRecord->clear();
}

void frmConvertILG::setConnectOption(int i)
{
    optDbconnect[size_t(i)]->setChecked(true);
    const HandlerScope scope(guard_);
    optDbconnect_Click(i);
}

void frmConvertILG::optDbconnect_Click(int i)
{
    disconnectTable();
    if (i == 0)
        return;
    auto t = std::make_unique<ilg::Table>();
    const QString file = findTableFile(fullDirTable[0], QLatin1String(kConnections[i].source));
    if (file.isEmpty() || !t->open(file)) {
        ui::MsgBox(QStringLiteral("Could not connect to database"));
        optDbconnect[0]->setChecked(true);
        return;
    }
    table_ = std::move(t);
    recordSource_ = QLatin1String(kConnections[i].source);
    datILG->setText(recordSource_ + QStringLiteral(": %1 records").arg(table_->recordCount()));
    datILG->setEnabled(true);
    cmdConvert->setEnabled(true);
    lblRecord->setText(QLatin1String(kConnections[i].connected));
}

void frmConvertILG::cmdLocate_Click()
{
    setConnectOption(0);
    fileConvertKind = 1;
    frmILGfinddbf::showModal(this);
}

void frmConvertILG::cmdConvert_Click()
{
    if (!table_)
        return;
    for (QWidget *w : {static_cast<QWidget *>(cmdConvert), static_cast<QWidget *>(cmdLocate),
                       static_cast<QWidget *>(datILG), static_cast<QWidget *>(fraConnect),
                       static_cast<QWidget *>(fraInclude)})
        w->setEnabled(false);
    stop_ = false;
    const ilg::Include include = {chkInclude[0]->isChecked(), chkInclude[1]->isChecked(), chkInclude[2]->isChecked(),
                                  chkInclude[3]->isChecked()};
    const int source = recordSource_ == QLatin1String("ILGADATA") ? 1 : 2;
    const QString path = ilg::ftlPath(QLatin1String(kConnections[source].file));
    QStringList lines;
    int count = 0;
    const int n = table_->recordCount();
    for (int i = 0; i < n && !stop_ && !guard_.stopRequested(); ++i) {
        if (table_->isDeleted(i))
            continue;
        const ilg::Record r = table_->record(i);
        if (!ilg::admitted(r, include))
            continue;
        lines << ilg::ftlLine(r);
        QCoreApplication::processEvents();
        ++count;
        if (count % 100 == 0) {
            lblRecnum->setText(QString::number(count));
            lblRecord->setText(lines.last().left(77));
            lblRecnum->repaint();
            lblRecord->repaint();
        }
    }
    textfile::writeAtomically(path, textfile::joinLines(lines));
    lblRecnum->setText(QString::number(count));
    lblRecord->clear();
    ui::MsgBox(QStringLiteral("Conversion ready"), ui::vbOKOnly, QStringLiteral("ILGRadio database"));
    close();
}

void frmConvertILG::cmdStop_Click() { stop_ = true; }

void frmConvertILG::cmdExit_Click() { close(); }

void frmConvertILG::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    stop_ = true;
    table_.reset();
    storeAtUnload(this, Win::frmConvertILG);
    isOpen(Win::frmConvertILG) = false;
    frmWelcome::forgetOpenWindow(Win::frmConvertILG, this);
    e->accept();
}
