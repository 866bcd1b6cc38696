#include "frmMemcell.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/shared_state.h"
#include "drivers/ar7030_tables.h"
#include "drivers/clsAR7030.h"
#include "drivers/clsNRD535.h"
#include "drivers/clsNRD545.h"
#include "memory/mem_record.h"
#include "panels/frmPanelBase.h"
#include "panels/panel_logic.h"
#include "panels/rx320_panel_logic.h"
#include "ui/facades.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QValidator>
#include <QVBoxLayout>

namespace {

// The tag box refuses what the file could not keep.
class TagValidator : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString &input, int &) const override
    {
        return memman::acceptableTag(input) ? Acceptable : Invalid;
    }
};

// Entries first..last of a label table, as far as the table reaches.
QStringList tableRange(const QStringList &table, int first, int last)
{
    QStringList r;
    for (int i = first; i <= last && i < table.size(); ++i)
        r << table[i];
    return r;
}

// A combo shows text: the entry when the list has it, else the text as it stands (a record's
// squelch, an unknown code), as a combo that can be typed into shows any text.
void showText(QComboBox *c, const QString &text)
{
    const int i = c->findText(text, Qt::MatchExactly);
    if (i >= 0)
        c->setCurrentIndex(i);
    else if (c->isEditable())
        c->setEditText(text);
    else
        c->setCurrentIndex(-1);
}

QString threeDigits(int n) { return numtext::format(n, QStringLiteral("000")); }

// The frequency as the model's panel shows it; without the panel, as a panel would show khz().
QString panelFrequency(Win panelWindow, const std::function<double()> &khz)
{
    if (auto *p = qobject_cast<frmPanelBase *>(frmWelcome::openWindow(panelWindow)))
        return p->frequencyText();
    return panel::frequencyText(khz(), freqLowerLimit, freqUpperLimit, QStringLiteral("####0.00"));
}

const QString kShiftZero = QStringLiteral(" 0.0k");
const QString kSqlZero = QStringLiteral("00");

} // namespace

frmMemcell::frmMemcell(int action, const QString &caption, RxDriver *driver, std::function<void(int row)> rowChanged,
                       QWidget *parent)
    : QDialog(parent), action_(action), driver_(driver), rowChanged_(std::move(rowChanged))
{
    setObjectName(QStringLiteral("frmMemcell"));
    setWindowTitle(caption);
    setModal(true);
    build();
    try {
        const HandlerScope scope(guard_);
        Form_Load();
    } catch (...) {
        // A load that failed (a fatal read) leaves nothing registered that points here.
        Form_Unload();
        throw;
    }
}

frmMemcell::~frmMemcell()
{
    frmWelcome::forgetOpenWindow(Win::frmMemcell, this);
}

void frmMemcell::build()
{
    auto combo = [this](const char *name, bool editable) {
        auto *c = new QComboBox(this);
        c->setObjectName(QLatin1String(name));
        c->setEditable(editable);
        c->setInsertPolicy(QComboBox::NoInsert);
        c->setMaxVisibleItems(20);
        if (editable)
            c->setCompleter(nullptr); // a typed text stays as typed
        return c;
    };
    // Only numbers of the image can be chosen: another would lie outside it.
    cmbCellnr = combo("cmbCellnr", false);
    txtFrequency = new QLineEdit(this);
    txtFrequency->setObjectName(QStringLiteral("txtFrequency"));
    cmbMode = combo("cmbMode", true);
    cmbBandwidth = combo("cmbBandwidth", true);
    cmbAttenuator = combo("cmbAttenuator", true);
    cmbAgcspeed = combo("cmbAgcspeed", true);
    cmbPBS = combo("cmbPBS", true);
    cmbSqlBfo = combo("cmbSqlBfo", true);
    cmbScanyn = combo("cmbScanyn", true);
    txtMemtag = new QLineEdit(this);
    txtMemtag->setObjectName(QStringLiteral("txtMemtag"));
    txtMemtag->setMaxLength(kMemTagWidth);
    txtMemtag->setValidator(new TagValidator(txtMemtag));
    txtMemtag->setMinimumWidth(txtMemtag->fontMetrics().horizontalAdvance(QString(kMemTagWidth, u'M')) / 2);

    lblSqlBfo = new QLabel(QStringLiteral("Sql"), this);
    lblSqlBfo->setObjectName(QStringLiteral("lblSqlBfo"));

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    auto place = [&](int row, int col, QLabel *caption, QWidget *w) {
        caption->setBuddy(w);
        grid->addWidget(caption, row, col * 2);
        grid->addWidget(w, row, col * 2 + 1);
    };
    auto caption = [this](const QString &text) { return new QLabel(text, this); };
    place(0, 0, caption(QStringLiteral("Cell nr")), cmbCellnr);
    place(1, 0, caption(QStringLiteral("Frequency kHz")), txtFrequency);
    place(2, 0, caption(QStringLiteral("Mode")), cmbMode);
    place(3, 0, caption(QStringLiteral("Bandwidth")), cmbBandwidth);
    place(4, 0, caption(QStringLiteral("Attenuator")), cmbAttenuator);
    place(0, 1, caption(QStringLiteral("Agcspeed")), cmbAgcspeed);
    place(1, 1, caption(QStringLiteral("PBS")), cmbPBS);
    place(2, 1, lblSqlBfo, cmbSqlBfo);
    place(3, 1, caption(QStringLiteral("Scan")), cmbScanyn);
    auto *tagCaption = caption(QStringLiteral("Alpha tag"));
    tagCaption->setBuddy(txtMemtag);
    grid->addWidget(tagCaption, 5, 0);
    grid->addWidget(txtMemtag, 5, 1, 1, 3);

    const char *captions[2] = {"To MMW", "To RxM"};
    const char *tips[2] = {"Write the cell into the Memory Management window",
                           "Write the cell into the receiver's memory"};
    auto *buttons = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        auto *b = new QPushButton(QLatin1String(captions[i]), this);
        b->setObjectName(QStringLiteral("cmdToMMWorRM_%1").arg(i));
        b->setAutoDefault(false);
        b->setToolTip(tr(tips[i]));
        connect(b, &QPushButton::clicked, this, guarded(guard_, [this, i] { cmdToMMWorRM_Click(i); }));
        buttons->addWidget(b);
        cmdToMMWorRM[size_t(i)] = b;
    }
    buttons->addStretch(1);
    cmdCancel = new QPushButton(QStringLiteral("Exit"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);
    connect(cmdCancel, &QPushButton::clicked, this, guarded(guard_, [this] { cmdCancel_Click(); }));
    buttons->addWidget(cmdCancel);

    auto *main = new QVBoxLayout(this);
    main->addLayout(grid);
    main->addSpacing(8);
    main->addLayout(buttons);

    connect(cmbMode, &QComboBox::currentTextChanged, this, guarded<const QString &>(guard_, [this](const QString &) {
                cmbMode_Change();
            }));
    nameForAccessibility(this);
}

void frmMemcell::Form_Load()
{
    placeAtLoad(this, Win::frmMemcell);
    isOpen(Win::frmMemcell) = true;
    frmWelcome::setOpenWindow(Win::frmMemcell, this);

    fillLists();
    cmbCellnr->setCurrentIndex(memRow >= 0 && memRow < cmbCellnr->count() ? memRow : -1);
    if (action_ == StoreRxSetting)
        showFields(receiverFields());
    else
        showFields(memman::fieldsFromRecord(memRecord[memRow], memTag[memRow], rxType));
}

void frmMemcell::fillLists()
{
    for (int i = 0; i <= lastMemoryIndex; ++i)
        cmbCellnr->addItem(threeDigits(i));

    bool toMmw = true, toRxm = true;
    bool att = true, agc = true, pbs = true, sqlBfo = true, scan = true;
    switch (rxType) {
    case rxAR7030:
        cmbMode->addItems(tableRange(modeTable, 1, 7));
        cmbBandwidth->addItems(tableRange(filterTable, 1, 6));
        cmbPBS->addItems(tableRange(ar7030ShiftTable, 0, 84));
        cmbScanyn->addItems(yesNoTable);
        att = agc = false;
        fillSqlBfo();
        break;
    case rxNRD535:
    case rxNRD545: {
        const bool is535 = rxType == rxNRD535;
        cmbMode->addItems(tableRange(modeTable, 0, is535 ? 8 : 9));
        cmbBandwidth->addItems(tableRange(filterTable, 0, is535 ? 3 : 2));
        cmbAttenuator->addItems(tableRange(attTable, 0, 1));
        cmbAgcspeed->addItems(tableRange(agcTable, 0, is535 ? 2 : 9));
        pbs = sqlBfo = scan = false;
        break;
    }
    case rxRX320:
        cmbMode->addItems(tableRange(modeTable, 0, 3));
        cmbBandwidth->addItems(tableRange(filterTable, 0, 33));
        // The cell holds the AGC as the receiver's 1..3; the list shows the three settings.
        cmbAgcspeed->addItems(tableRange(agcTable, 0, 2));
        att = pbs = sqlBfo = scan = false;
        toRxm = false;
        break;
    default:
        toMmw = toRxm = false;
        break;
    }
    cmbAttenuator->setEnabled(att);
    cmbAgcspeed->setEnabled(agc);
    cmbPBS->setEnabled(pbs);
    cmbSqlBfo->setEnabled(sqlBfo);
    lblSqlBfo->setEnabled(sqlBfo);
    cmbScanyn->setEnabled(scan);
    cmdToMMWorRM[0]->setEnabled(toMmw);
    cmdToMMWorRM[1]->setEnabled(toRxm);
}

void frmMemcell::fillSqlBfo()
{
    sqlIsBfo_ = memman::bfoMode(cmbMode->currentText());
    lblSqlBfo->setText(sqlIsBfo_ ? QStringLiteral("BFO") : QStringLiteral("Sql"));
    const QSignalBlocker quiet(cmbSqlBfo);
    cmbSqlBfo->clear();
    if (sqlIsBfo_) {
        cmbSqlBfo->addItems(tableRange(ar7030ShiftTable, 0, 84));
    } else {
        for (int i = 0; i <= 99; ++i)
            cmbSqlBfo->addItem(numtext::format(i, QStringLiteral("00")));
    }
}

void frmMemcell::cmbMode_Change()
{
    if (rxType != rxAR7030)
        return;
    // The list is rebuilt for every new mode text. A value of the same kind stays; one of the
    // other kind means nothing there and gives way to the zero of the new list.
    const bool wasBfo = sqlIsBfo_;
    const QString kept = cmbSqlBfo->currentText();
    fillSqlBfo();
    showText(cmbSqlBfo, sqlIsBfo_ == wasBfo ? kept : sqlIsBfo_ ? kShiftZero : kSqlZero);
}

void frmMemcell::showFields(const memman::CellFields &f)
{
    txtFrequency->setText(f.frequency);
    showText(cmbMode, f.mode); // the AR7030's Sql/BFO list follows the mode before its value is set
    showText(cmbBandwidth, f.bandwidth);
    showText(cmbAttenuator, f.attenuator);
    showText(cmbAgcspeed, f.agc);
    showText(cmbPBS, f.pbs);
    showText(cmbSqlBfo, f.sqlBfo);
    showText(cmbScanyn, f.scan);
    txtMemtag->setText(f.tag);
}

memman::CellFields frmMemcell::receiverFields()
{
    memman::CellFields f;
    f.cell = memRow;
    switch (rxType) {
    case rxAR7030:
        if (auto *ar = dynamic_cast<clsAR7030 *>(driver_)) {
            f.frequency = panelFrequency(Win::frmAR7030, [ar] { return ar->FrequencyA(); });
            const int mode = ar->Mode();
            f.mode = memman::tableLabel(modeTable, mode);
            f.bandwidth = memman::tableLabel(filterTable, ar->Bandwidth());
            f.pbs = panel::b2fs(ar->PassBandShift());
            f.sqlBfo = mode == 4 || mode == 5 ? panel::b2fs(ar->Beatfreqosc()) : panel::b2sql(ar->Squelch());
            f.scan = yesNoTable.value(0); // the present setting is offered for the scan
        }
        break;
    case rxNRD535:
    case rxNRD545:
        if (auto *jrc = dynamic_cast<JrcDriver *>(driver_)) {
            f = memman::fieldsFromJrcStatus(jrc->RxStatus());
            f.cell = memRow;
        }
        break;
    case rxRX320:
        // The receiver cannot report its setting: what the panel shows and what was last sent.
        f.frequency = panelFrequency(Win::frmRX320, [] { return rx320Freq; });
        f.mode = memman::tableLabel(modeTable, rx320Mode);
        f.bandwidth = memman::tableLabel(filterTable, rx320Bandwidth);
        f.agc = memman::tableLabel(agcTable, rx320panel::agcIndexOfWire(rx320Agc));
        break;
    default:
        break;
    }
    return f;
}

memman::CellFields frmMemcell::shownFields() const
{
    memman::CellFields f;
    f.cell = numtext::toInt(numtext::Val(cmbCellnr->currentText()));
    f.frequency = txtFrequency->text();
    f.mode = cmbMode->currentText();
    f.bandwidth = cmbBandwidth->currentText();
    f.attenuator = cmbAttenuator->currentText();
    f.agc = cmbAgcspeed->currentText();
    f.pbs = cmbPBS->currentText();
    f.sqlBfo = cmbSqlBfo->currentText();
    f.scan = cmbScanyn->currentText();
    f.tag = txtMemtag->text();
    return f;
}

void frmMemcell::cmdToMMWorRM_Click(int index)
{
    const memman::CellFields f = shownFields();
    memRow = int16_t(f.cell);
    const QString nnn = threeDigits(memRow);
    const std::optional<QString> record = memman::recordFromFields(f, rxType);
    if (!record) {
        ui::MsgBox(QStringLiteral("Frequency outside range"), ui::vbExclamation, QStringLiteral("Input Error"));
        return;
    }
    const QString vacant = vacantMemRecord(memRow);
    const int ask = ui::vbYesNoCancel + ui::vbQuestion;

    if (index == 0) {
        const QString q = action_ < Delete
                              ? QStringLiteral("You want to fill the MemMan\nWindow row ") + nnn
                                    + QStringLiteral(" with the\nsettings shown")
                              : QStringLiteral("You want to empty the MemMan\nWindow cell ") + nnn;
        if (ui::MsgBox(q, ask, QStringLiteral("Adapt MemMan Window")) != ui::vbYes)
            return;
        memRecord[memRow] = action_ < Delete ? *record : vacant;
        memTag[memRow] = action_ < Delete ? f.tag : QString();
        if (rowChanged_)
            rowChanged_(memRow);
        ui::MsgBox(QStringLiteral("MemMan Window row\n") + nnn + QStringLiteral("\n is now updated"), ui::vbInformation,
                   QStringLiteral("MemMan Window changed"));
        return;
    }

    const QString q = action_ <= Copy ? QStringLiteral("You want to fill the receiver\nmemory cell ") + nnn
                                            + QStringLiteral(" with the\nsettings shown")
                                      : QStringLiteral("You want to empty the receiver\nmemory cell ") + nnn;
    if (ui::MsgBox(q, ask, QStringLiteral("Adapt Receiver Memory")) != ui::vbYes)
        return;
    // A copy sends what the target cell holds now, not what is shown: the image stays as it was.
    if (action_ < Copy) {
        memRecord[memRow] = *record;
        memTag[memRow] = f.tag;
    } else if (action_ == Delete) {
        memRecord[memRow] = vacant;
        memTag[memRow] = QString();
    }
    const QString sent = memRecord[memRow];
    if (auto *ar = dynamic_cast<clsAR7030 *>(driver_))
        ar->setMemory(memRow, sent);
    else if (auto *nrd535 = dynamic_cast<clsNRD535 *>(driver_))
        nrd535->setMemory(memRow, sent);
    else if (auto *nrd545 = dynamic_cast<clsNRD545 *>(driver_))
        nrd545->setMemory(memRow, sent);
    ui::MsgBox(QStringLiteral("Receiver memory cell\n") + nnn + QStringLiteral("\n is now updated"), ui::vbInformation,
               QStringLiteral("Receiver memory is changed"));
}

void frmMemcell::cmdCancel_Click() { close(); }

void frmMemcell::Form_Unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    storeAtUnload(this, Win::frmMemcell);
    isOpen(Win::frmMemcell) = false;
    frmWelcome::forgetOpenWindow(Win::frmMemcell, this);
    QDialog::done(QDialog::Rejected);
}

void frmMemcell::closeEvent(QCloseEvent *e)
{
    // Not while a handler waits on the receiver: the close comes back when it has returned.
    if (guard_.holdClose(e))
        return;
    Form_Unload();
    e->accept();
}

// Escape and the title bar's close go the way of "Exit".
void frmMemcell::reject() { close(); }
