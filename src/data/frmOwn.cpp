#include "frmOwn.h"
#include "core/textfile.h"
#include "data/file_store.h"

#include <QLabel>

namespace {
QPointer<frmOwn> theOwn;
constexpr int kOwnKind = 2;
} // namespace

frmOwn::frmOwn()
    : ScheduleListWindow({Win::frmOwn, "frmOwn", kOwnKind, "grdOwn", "lblDbname", QStringLiteral("Load Own File"),
                          QStringLiteral("OWN")},
                         {2200, 550, 550, 1000, 8 * 620 + 300}, lists::ownTitles(),
                         // the empty column and the mode letter after the eight frequencies
                         {2200, 550, 550, 1000, 620, 620, 620, 620, 620, 620, 620, 620, 0, 300})
{
    grdOwn = grid_;
    lblDbname = fileLabel;
}

frmOwn *frmOwn::open() { return raiseOrLoad(theOwn); }

void frmOwn::LoadOwnFile()
{
    setCursor(Qt::WaitCursor);
    const int32_t count = lists::readOwn(textfile::readAll(chosenFilePath()));
    std::vector<QStringList> rows;
    rows.reserve(size_t(count));
    for (int32_t i = 1; i <= count; ++i)
        rows.push_back(lists::ownRow(ownRecords[size_t(i)]));
    showRows(rows);
    lblDbname->setText(chosenFileTable[kOwnKind]);
    unsetCursor();
}

void frmOwn::grdOwn_Click(int row, int col, const QString &text)
{
    tune(lists::ownClick(col, text, grdOwn->text(row, lists::kOwnModeColumn)));
}
