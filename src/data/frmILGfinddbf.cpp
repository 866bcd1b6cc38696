#include "frmILGfinddbf.h"
#include "core/paths.h"
#include "core/shared_state.h"
#include "data/file_store.h"
#include "data/frmConvertAero.h"
#include "data/frmConvertILG.h"
#include "data/ilg_convert.h"
#include "ui/widgets/form_position.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const QString kUp = QStringLiteral("..");
}

frmILGfinddbf::frmILGfinddbf(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmILGfinddbf"));
    setModal(true);
    drvILG = new QComboBox(this);
    drvILG->setObjectName(QStringLiteral("drvILG"));
    drvILG->setAccessibleName(tr("Drive"));
    lblDir = new QLabel(this);
    lblDir->setObjectName(QStringLiteral("lblDir"));
    lblDir->setWordWrap(true);
    dirILG = new QListWidget(this);
    dirILG->setObjectName(QStringLiteral("dirILG"));
    dirILG->setAccessibleName(tr("Directories"));
    dirILG->setToolTip(tr("Double click a folder to open it"));
    flbILG = new QListWidget(this);
    flbILG->setObjectName(QStringLiteral("flbILG"));
    flbILG->setAccessibleName(tr("Files"));
    dirILG->setMinimumSize(220, 200);
    flbILG->setMinimumSize(160, 200);
    cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdOK->setAutoDefault(false);
    cmdCancel->setAutoDefault(false);

    auto *left = new QVBoxLayout;
    left->addWidget(drvILG);
    left->addWidget(lblDir);
    left->addWidget(dirILG, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *right = new QVBoxLayout;
    right->addWidget(flbILG, 1);
    right->addLayout(buttons);
    auto *main = new QHBoxLayout(this);
    main->addLayout(left, 3);
    main->addLayout(right, 2);

    for (const QFileInfo &d : QDir::drives())
        drvILG->addItem(QDir::toNativeSeparators(d.absoluteFilePath()));
    connect(drvILG, &QComboBox::activated, this, &frmILGfinddbf::drvILG_Change);
    connect(dirILG, &QListWidget::itemActivated, this, &frmILGfinddbf::dirILG_Change);
    connect(cmdOK, &QPushButton::clicked, this, &frmILGfinddbf::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmILGfinddbf::cmdCancel_Click);
    nameForAccessibility(this);
}

void frmILGfinddbf::showModal(QWidget *parent)
{
    frmILGfinddbf f(parent);
    f.Form_Load();
    if (!f.unloaded_)
        f.exec();
}

void frmILGfinddbf::Form_Load()
{
    placeAtLoad(this, Win::frmILGfinddbf);
    isOpen(Win::frmILGfinddbf) = true;
    if (fileConvertKind == 2) {
        setWindowTitle(QStringLiteral("Find Aero*.txt"));
        pattern_ = QStringLiteral("aerolist.txt");
    } else {
        setWindowTitle(QStringLiteral("Find ILG*.dbf"));
        pattern_ = QStringLiteral("ilgsdata.dbf;ilgadata.dbf");
    }
    cmdOK->setEnabled(false);
    // Where the last source was found, else the data directory.
    QString start = paths::native(fullDirTable[0]);
    if (fullDirTable[0].isEmpty() || !QDir(start).exists())
        start = paths::native(dirPath);
    if (!QDir(start).exists())
        start = QDir::currentPath();
    setDirectory(start);
}

void frmILGfinddbf::setDirectory(const QString &dir)
{
    dir_ = QDir::cleanPath(QDir(dir).absolutePath());
    lblDir->setText(QDir::toNativeSeparators(dir_));
    for (int i = 0; i < drvILG->count(); ++i)
        if (dir_.startsWith(QDir::fromNativeSeparators(drvILG->itemText(i)), Qt::CaseInsensitive))
            drvILG->setCurrentIndex(i);
    dirILG->clear();
    if (!QDir(dir_).isRoot())
        dirILG->addItem(kUp);
    QStringList subs = QDir(dir_).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::sort(subs.begin(), subs.end(), [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    dirILG->addItems(subs);
    fillFiles();
}

void frmILGfinddbf::fillFiles()
{
    flbILG->clear();
    QStringList files;
    for (const QString &f : QDir(dir_).entryList(QDir::Files | QDir::Hidden))
        if (matchesPattern(f, pattern_))
            files << f;
    std::sort(files.begin(), files.end(), [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    flbILG->addItems(files);
    cmdOK->setEnabled(flbILG->count() >= 1);
}

void frmILGfinddbf::drvILG_Change() { setDirectory(QDir::fromNativeSeparators(drvILG->currentText())); }

void frmILGfinddbf::dirILG_Change()
{
    QListWidgetItem *it = dirILG->currentItem();
    if (!it)
        return;
    setDirectory(it->text() == kUp ? QFileInfo(dir_).absolutePath() : QDir(dir_).filePath(it->text()));
}

void frmILGfinddbf::cmdOK_Click()
{
    fileType = 0;
    fullDirTable[0] = paths::toSettingsText(dir_);
    const QString file = flbILG->currentItem() ? flbILG->currentItem()->text() : QString();
    chosenFileTable[0] = paths::toSettingsText(file);
    const QString lower = file.toLower();
    if (fileConvertKind == 1) {
        if (frmConvertILG *c = frmConvertILG::openWindow()) {
            c->fraConnect->setEnabled(true);
            if (lower == QLatin1String("ilgadata.dbf"))
                c->setConnectOption(1);
            else if (lower == QLatin1String("ilgsdata.dbf"))
                c->setConnectOption(2);
        }
    } else if (fileConvertKind == 2) {
        if (frmConvertAero *c = frmConvertAero::openWindow()) {
            c->fraConnect->setEnabled(true);
            if (lower == QLatin1String("aerolist.txt"))
                c->setConnectOption(1);
        }
    }
    unload();
}

void frmILGfinddbf::cmdCancel_Click() { unload(); }

void frmILGfinddbf::unload()
{
    if (unloaded_)
        return;
    unloaded_ = true;
    storeAtUnload(this, Win::frmILGfinddbf);
    isOpen(Win::frmILGfinddbf) = false;
    QDialog::done(QDialog::Accepted);
}

void frmILGfinddbf::closeEvent(QCloseEvent *e)
{
    unload();
    e->accept();
}

void frmILGfinddbf::reject() { unload(); }
