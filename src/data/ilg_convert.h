#pragma once
// The ILGRadio tables turned into flat 125-column FTL lines: the record, and which records a
// conversion takes.
#include "data/dbf_table.h"

#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>

// What frmILGfinddbf looks for, set by the converter that opens it: 1 ILG tables, 2 the Aero list.
extern int16_t fileConvertKind;

namespace ilg {

using Field = std::optional<QString>; // nothing: Null in the table

enum FieldId : int {
    Freq, Utc, Station, Target, Language, Power, Lati, Longi,
    AreaNA, AreaCA, AreaSA, AreaEU, AreaAF, AreaME, AreaAS, AreaAU, AreaPA,
    Country, Location, Status, FieldCount
};
constexpr int kAreaCount = 9;
// The table's column of each field; the area columns are named by their codes, in the order of
// regionCodes.
extern const std::array<const char *, FieldCount> kFieldNames;

using Record = std::array<Field, FieldCount>;

constexpr int kLineWidth = 125;

// The FTL line of a record: text fields cut to their widths and padded, Null as two blanks,
// the frequency by "00000.00" (never cut: six digits shift the line), the nine area flags.
QString ftlLine(const Record &r);

// Include boxes E, I, N, P.
using Include = std::array<bool, 4>;
// A UTC that is Null or does not begin with a digit is skipped.
bool utcPasses(const Field &utc);
// Status upper-cased, Null as "C": E, I, N, P pass only with their box; any other passes.
bool statusPasses(const Field &status, const Include &include);
inline bool admitted(const Record &r, const Include &include)
{
    return utcPasses(r[Utc]) && statusPasses(r[Status], include);
}

// An ILG table through shapelib, its fields found by name.
class Table {
public:
    // False where the file cannot be opened or lacks a field the record needs.
    bool open(const QString &path);
    int recordCount() const { return dbf_.recordCount(); }
    bool isDeleted(int i) const { return dbf_.isDeleted(i); }
    Record record(int i) const;

private:
    DbfTable dbf_;
    std::array<int, FieldCount> index_{};
};

// Every record of a table that a conversion with these boxes takes, as FTL lines, in table order.
class Table;
QStringList convert(const Table &table, const Include &include);

// An FTL file by its name ("ILGSDATA.FTL", "aero.ftl") in "RX2DB\" under the data directory; an
// existing file of that name in another case is the one replaced.
QString ftlPath(const QString &fileName);

} // namespace ilg
