#include "frmConvertAero.h"
#include "ui/widgets/raise_or_load.h"
#include "core/runtime_error.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/aero_convert.h"
#include "data/file_store.h"
#include "data/frmILGfinddbf.h"
#include "data/ilg_convert.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
QPointer<frmConvertAero> theConverter;
}

frmConvertAero::frmConvertAero(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("frmConvertAero"));
    setWindowTitle(QStringLiteral("Aero list to FTL files"));
    setAttribute(Qt::WA_DeleteOnClose);
    build();
}

frmConvertAero *frmConvertAero::open() { return raiseOrLoad(theConverter); }

frmConvertAero *frmConvertAero::openWindow() { return theConverter; }

void frmConvertAero::build()
{
    lblTitle = new QLabel(QStringLiteral("Aero Database Conversion"), this);
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
    cmdLocate = button("cmdLocate", QStringLiteral("Locate aero *.txt file"));
    cmdConvert = button("cmdConvert", QStringLiteral("Convert"));
    cmdStop = button("cmdStop", QStringLiteral("Stop"));
    cmdExit = button("cmdExit", QStringLiteral("Exit conversion"));

    auto options = [this](QGroupBox *frame, const char *name, const char *const captions[2], auto &into) {
        auto *box = new QVBoxLayout(frame);
        auto *group = new QButtonGroup(frame);
        for (int i = 0; i < 2; ++i) {
            into[size_t(i)] = new QRadioButton(QLatin1String(captions[i]), frame);
            into[size_t(i)]->setObjectName(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(i));
            group->addButton(into[size_t(i)], i);
            box->addWidget(into[size_t(i)]);
        }
    };
    fraConnect = new QGroupBox(this);
    fraConnect->setObjectName(QStringLiteral("fraConnect"));
    const char *const connects[2] = {"No db connected", "Connect to Aero db"};
    options(fraConnect, "optDbconnect", connects, optDbconnect);
    fraType = new QGroupBox(this);
    fraType->setObjectName(QStringLiteral("fraType"));
    const char *const types[2] = {"Include full details", "Network data only"};
    options(fraType, "optDbtype", types, optDbtype);
    for (int i = 0; i < 2; ++i)
        connect(optDbconnect[size_t(i)], &QRadioButton::clicked, this, guarded(guard_, [this, i] { optDbconnect_Click(i); }));

    lblCount = new QLabel(this);
    lblCount->setObjectName(QStringLiteral("lblCount"));
    lblCount->setMinimumWidth(80);
    lblShowrecord = new QLabel(this);
    lblShowrecord->setObjectName(QStringLiteral("lblShowrecord"));
    QFont fixed(QStringLiteral("Monospace"));
    fixed.setStyleHint(QFont::TypeWriter);
    lblShowrecord->setFont(fixed);
    lblShowrecord->setFrameShape(QFrame::StyledPanel);
    lblShowrecord->setMinimumWidth(QFontMetrics(fixed).horizontalAdvance(QString(77, QLatin1Char('0'))) + 8);
    lblShowrecord->setMinimumHeight(QFontMetrics(fixed).height() + 8);

    auto *frames = new QHBoxLayout;
    auto *leftCol = new QVBoxLayout;
    leftCol->addWidget(cmdLocate);
    leftCol->addWidget(fraConnect);
    frames->addLayout(leftCol, 1);
    frames->addWidget(fraType, 1);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(cmdConvert);
    buttons->addWidget(cmdStop);
    buttons->addStretch(1);
    buttons->addWidget(cmdExit);
    frames->addLayout(buttons);
    auto *col = new QVBoxLayout(this);
    col->addWidget(lblTitle);
    col->addLayout(frames);
    col->addWidget(lblCount);
    col->addWidget(lblShowrecord);
    col->setSizeConstraint(QLayout::SetFixedSize);

    const std::pair<QPushButton *, void (frmConvertAero::*)()> handlers[] = {
        {cmdLocate, &frmConvertAero::cmdLocate_Click}, {cmdConvert, &frmConvertAero::cmdConvert_Click},
        {cmdStop, &frmConvertAero::cmdStop_Click}, {cmdExit, &frmConvertAero::cmdExit_Click}};
    for (const auto &[b, h] : handlers)
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, h = h] { (this->*h)(); }));
    nameForAccessibility(this);
}

void frmConvertAero::Form_Load()
{
    fileConvertKind = 2;
    optDbtype[0]->setChecked(true);
    optDbconnect[0]->setChecked(true);
    fraConnect->setEnabled(false);
    cmdConvert->setEnabled(false);
    show();
}

void frmConvertAero::setConnectOption(int i)
{
    optDbconnect[size_t(i)]->setChecked(true);
    const HandlerScope scope(guard_);
    optDbconnect_Click(i);
}

void frmConvertAero::optDbconnect_Click(int i)
{
    lblCount->clear();
    if (i == 0) {
        cmdConvert->setEnabled(false);
        lblShowrecord->clear();
        return;
    }
    cmdConvert->setEnabled(true);
    lblShowrecord->setText(QStringLiteral("Aerolist db connected, conversion can be started"));
}

void frmConvertAero::cmdLocate_Click()
{
    setConnectOption(0);
    fileConvertKind = 2;
    frmILGfinddbf::showModal(this);
}

void frmConvertAero::cmdConvert_Click()
{
    QByteArray bytes;
    try {
        bytes = textfile::readAll(fullDirTable[0] + QStringLiteral("\\") + chosenFileTable[0]);
    } catch (const RuntimeError &) {
        // The converters trap what goes wrong with their source.
        ui::MsgBox(QStringLiteral("Could not connect to database"));
        setConnectOption(0);
        return;
    }
    for (QWidget *w : {static_cast<QWidget *>(cmdConvert), static_cast<QWidget *>(cmdLocate),
                       static_cast<QWidget *>(fraConnect), static_cast<QWidget *>(fraType)})
        w->setEnabled(false);
    stop_ = false;
    const bool network = optDbtype[1]->isChecked();
    aero::FullDetails full;
    aero::NetworkOnly nets;
    const QStringList in = textfile::splitLines(bytes);
    QStringList out;
    int count = 0;
    for (int i = 0; i < in.size() && !stop_ && !guard_.stopRequested(); ++i) {
        const std::optional<QString> line = network ? nets.take(in[i]) : full.take(in[i]);
        if (line)
            out << *line;
        QCoreApplication::processEvents();
        ++count;
        if (count % 100 == 0) {
            lblCount->setText(QString::number(count));
            lblShowrecord->setText(in[i].left(77));
            lblCount->repaint();
            lblShowrecord->repaint();
        }
    }
    textfile::writeAtomically(ilg::ftlPath(network ? QStringLiteral("aero2.ftl") : QStringLiteral("aero.ftl")),
                              textfile::joinLines(out));
    lblShowrecord->clear();
    lblCount->setText(QString::number(count));
    ui::MsgBox(QStringLiteral("Conversion ready"), ui::vbOKOnly, QStringLiteral("Aerolist database"));
    close();
}

void frmConvertAero::cmdStop_Click() { stop_ = true; }

void frmConvertAero::cmdExit_Click() { close(); }

void frmConvertAero::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    stop_ = true;
    e->accept();
}
