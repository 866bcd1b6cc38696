#include "frmBdxc.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "ui/facades.h"

#include <QLabel>

namespace {
QPointer<frmBdxc> theBdxc;
constexpr int kBdxcKind = 1;
} // namespace

frmBdxc::frmBdxc()
    : ScheduleListWindow({Win::frmBdxc, "frmBdxc", kBdxcKind, "grdBdxc", "lblDbname", QStringLiteral("Load BDXC File"),
                          QStringLiteral("BDXC")},
                         {1400, 1800, 1120, 4680}, lists::bdxcTitles({}, false),
                         {1400, 1800, 1120, 620, 620, 620, 620, 620, 620, 620})
{
    grdBdxc = grid_;
    lblDbname = fileLabel;
}

frmBdxc *frmBdxc::open() { return raiseOrLoad(theBdxc); }

void frmBdxc::LoadBdxcFile()
{
    setCursor(Qt::WaitCursor);
    const int32_t count = lists::readBdxc(textfile::readAll(chosenFilePath()));
    const QString answer = ui::InputBox(QStringLiteral("Enter time in UTC (Format: hhmm).\n"
                                                       "To enter current time in UTC just press enter\n"
                                                       "Enter 'all' to get all records in the file"),
                                        QStringLiteral("Selection Criterium"), lists::selectionDefault(utcText));
    if (const auto rows = lists::bdxcRows(answer, count)) {
        showRows(*rows);
        bdxcRowCount = int32_t(rows->size());
        lblDbname->setText(chosenFileTable[kBdxcKind]);
        unsetCursor();
    }
    grdTitles->rows()->replace(0, lists::bdxcTitles(chosenFileTable[kBdxcKind], true));
}

void frmBdxc::grdBdxc_Click(int row, int col, const QString &text) { tune(lists::bdxcClick(row, col, text, bdxcRowCount)); }
