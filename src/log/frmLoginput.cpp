#include "frmLoginput.h"
#include "core/frmWelcome.h"
#include "core/shared_state.h"
#include "log/frmLog.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QValidator>
#include <QVBoxLayout>

using namespace logbook;

namespace {
// The typing rule of one box. Shortening is always allowed, so that a loaded field that breaks
// the rule can still be corrected.
class TypingRule : public QValidator {
public:
    TypingRule(int field, QLineEdit *box) : QValidator(box), field_(field), box_(box) {}
    State validate(QString &input, int &) const override
    {
        if (acceptableTyping(field_, input) || input.size() < box_->text().size())
            return Acceptable;
        return Invalid;
    }

private:
    int field_;
    QLineEdit *box_;
};
} // namespace

frmLoginput::frmLoginput(frmLog *log, bool add, int row) : QDialog(log), log_(log), add_(add), row_(row)
{
    setObjectName(QStringLiteral("frmLoginput"));
    setWindowTitle(QStringLiteral("Log input"));
    setAttribute(Qt::WA_DeleteOnClose);
    // Only "Logging" waits for the form: the panel and Tracking stay usable.
    setWindowModality(Qt::WindowModal);
    build();
}

frmLoginput::~frmLoginput()
{
    if (!unloaded_) {
        isOpen(Win::frmLoginput) = false;
        frmWelcome::forgetOpenWindow(Win::frmLoginput, this);
    }
}

void frmLoginput::build()
{
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFontMetrics fm(fixed);

    lblRecordnr = new QLabel(this);
    lblRecordnr->setObjectName(QStringLiteral("lblRecordnr"));
    QFont bold = font();
    bold.setBold(true);
    lblRecordnr->setFont(bold);

    auto *boxes = new QGridLayout;
    boxes->setHorizontalSpacing(10);
    for (int n = 0; n < kFields; ++n) {
        const FieldSpec &f = kFieldSpecs[size_t(n)];
        auto *l = new QLabel(QString::fromLatin1(f.label), this);
        l->setObjectName(QStringLiteral("lblLoginput_%1").arg(n));
        auto *t = new QLineEdit(this);
        t->setObjectName(QStringLiteral("txtLoginput_%1").arg(n));
        t->setFont(fixed);
        t->setMaxLength(f.width);
        t->setValidator(new TypingRule(n, t));
        // Room for the whole field, no more.
        t->setFixedWidth(fm.horizontalAdvance(QString(f.width, u'W')) + 18);
        l->setBuddy(t);
        lblLoginput[size_t(n)] = l;
        txtLoginput[size_t(n)] = t;
        boxes->addWidget(l, n, 0);
        boxes->addWidget(t, n, 1, Qt::AlignLeft);
    }
    boxes->setColumnStretch(1, 1);

    auto button = [this](const char *name, const QString &caption) {
        auto *b = new QPushButton(caption, this);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        return b;
    };
    cmdOk = button("cmdOk", QStringLiteral("OK"));
    cmdCancel = button("cmdCancel", QStringLiteral("Cancel"));
    cmdGetcurrentsetting = button("cmdGetcurrentsetting", QStringLiteral("Get Current Setting"));

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdGetcurrentsetting);
    buttons->addStretch(1);
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);

    auto *col = new QVBoxLayout(this);
    col->addWidget(lblRecordnr);
    col->addSpacing(4);
    col->addLayout(boxes);
    col->addSpacing(8);
    col->addLayout(buttons);
    col->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmdOk, &QPushButton::clicked, this, guarded(guard_, [this] { cmdOK_Click(); }));
    connect(cmdCancel, &QPushButton::clicked, this, guarded(guard_, [this] { cmdCancel_Click(); }));
    connect(cmdGetcurrentsetting, &QPushButton::clicked, this,
            guarded(guard_, [this] { cmdGetcurrentsetting_Click(); }));
    nameForAccessibility(this);
}

void frmLoginput::Form_Load()
{
    placeAtLoad(this, Win::frmLoginput);
    lblRecordnr->setText(QStringLiteral("Record ") + recordNumber(row_));
    if (add_) {
        emptyBoxes();
    } else {
        const Record &r = logRecords[size_t(row_)];
        for (int n = 0; n < kFields; ++n) {
            QString s = r[size_t(n)];
            while (s.endsWith(u' '))
                s.chop(1);
            txtLoginput[size_t(n)]->setText(s);
        }
    }
    isOpen(Win::frmLoginput) = true;
    frmWelcome::setOpenWindow(Win::frmLoginput, this);
    show();
    txtLoginput[0]->setFocus();
}

void frmLoginput::Form_Unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    storeAtUnload(this, Win::frmLoginput);
    isOpen(Win::frmLoginput) = false;
    frmWelcome::forgetOpenWindow(Win::frmLoginput, this);
}

void frmLoginput::closeEvent(QCloseEvent *e)
{
    if (guard_.holdClose(e))
        return;
    // The close box is Cancel: a record added and not kept is taken back.
    takeBack();
    Form_Unload();
    e->accept();
}

void frmLoginput::reject() { close(); }

void frmLoginput::emptyBoxes()
{
    for (QLineEdit *t : txtLoginput)
        t->clear();
}

void frmLoginput::takeBack()
{
    if (!add_ || unloaded_)
        return;
    add_ = false;
    if (size_t(row_) < logRecords.size())
        logRecords[size_t(row_)] = Record{};
    if (logCount == row_)
        --logCount;
}

void frmLoginput::cmdCancel_Click()
{
    emptyBoxes();
    close();
}

void frmLoginput::cmdOK_Click()
{
    int filled = 0;
    for (QLineEdit *t : txtLoginput)
        filled += t->text().isEmpty() ? 0 : 1;
    if (filled == 0) {
        close();
        return;
    }
    Record r;
    for (int n = 0; n < kFields; ++n) {
        const std::optional<QString> stored = storedField(n, txtLoginput[size_t(n)]->text());
        if (!stored) {
            ui::MsgBox(QStringLiteral("%1: \"%2\" does not fit the log's %3 columns.")
                           .arg(QString::fromLatin1(kFieldSpecs[size_t(n)].label), txtLoginput[size_t(n)]->text())
                           .arg(kFieldSpecs[size_t(n)].width),
                       ui::vbExclamation, windowTitle());
            txtLoginput[size_t(n)]->setFocus();
            return;
        }
        r[size_t(n)] = *stored;
    }
    logRecords[size_t(row_)] = r;
    emptyBoxes();
    const bool add = add_;
    // Kept: neither the close nor a later cancel takes it back.
    add_ = false;
    if (add)
        log_->grdLog->rows()->append(gridRow(r, row_, logMask));
    close();
    if (!add)
        log_->FillLogGrid();
}

void frmLoginput::cmdGetcurrentsetting_Click()
{
    if (!txtLoginput[0]->text().isEmpty()) {
        const int answer = ui::MsgBox(QStringLiteral("You are sure you want to replace the\ncurrent record by current Rx setting"),
                                      ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Replace"));
        if (answer != ui::vbYes)
            return;
    }
    cmdGetcurrentsetting->setEnabled(false);
    txtLoginput[kDateField]->setText(utcStamp.left(8));
    txtLoginput[kStartField]->setText(utcStamp.right(4));
    if (frmWelcome *w = frmWelcome::instance()) {
        w->Update4RxFreq();
        if (rxType >= 1 && rxType <= 4)
            if (RxPanel *p = w->hub.panel())
                txtLoginput[kFrequencyField]->setText(p->frequencyText());
        txtLoginput[kRxSettingField]->setText(w->ConvertRx2mfa());
    }
    cmdGetcurrentsetting->setEnabled(true);
}
