#include "frm320Files.h"
#include "core/textfile.h"
#include "data/file_store.h"

#include <QLabel>

namespace {
QPointer<frm320Files> the320Files;
constexpr int k320Kind = 10;
} // namespace

frm320Files::frm320Files()
    : ScheduleListWindow({Win::frm320Files, "frm320Files", k320Kind, "grd320Files", "lblDBname",
                          QStringLiteral("Load .320 File"), QStringLiteral(".320 Files")},
                         {2130, 975, 345, 1605, 1080, 450, 450, 2085}, lists::titles320(),
                         {2130, 975, 345, 1605, 1080, 450, 450, 2085})
{
    grd320Files = grid_;
    lblDBname = fileLabel;
}

frm320Files *frm320Files::open() { return raiseOrLoad(the320Files); }

void frm320Files::Load320File()
{
    grd320Files->rows()->clear();
    const int32_t count = lists::read320(textfile::readAll(chosenFilePath()));
    std::vector<QStringList> rows;
    rows.reserve(size_t(count));
    for (int32_t i = 1; i <= count; ++i)
        rows.push_back(lists::row320(file320Fields[size_t(i)]));
    showRows(rows);
    lblDBname->setText(chosenFileTable[k320Kind]);
}

void frm320Files::grd320Files_Click(int row, int, const QString &)
{
    tune(lists::click320(grd320Files->text(row, lists::k320FrequencyColumn), grd320Files->text(row, lists::k320ModeColumn)));
}
