#include "dbf_table.h"
#include "core/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <shapefil.h>

namespace {
DBFHandle h(void *p) { return static_cast<DBFHandle>(p); }
}

DbfTable::~DbfTable() { close(); }

bool DbfTable::open(const QString &path)
{
    close();
    const QByteArray name = QFile::encodeName(path);
    // shapelib reports through stderr what it cannot read; a table it cannot open is only refused.
    if (!QFile::exists(path) || QFileInfo(path).isDir())
        return false;
    handle_ = DBFOpen(name.constData(), "rb");
    if (!handle_)
        return false;
    const DBFHandle t = h(handle_);
    const qint64 room = t->nRecordLength > 0 ? (QFileInfo(path).size() - t->nHeaderLength) / t->nRecordLength : 0;
    records_ = int(std::clamp<qint64>(room, 0, std::max(0, t->nRecords)));
    return true;
}

void DbfTable::close()
{
    if (handle_)
        DBFClose(h(handle_));
    handle_ = nullptr;
    records_ = 0;
}

int DbfTable::fieldIndex(const QString &name) const
{
    if (!handle_)
        return -1;
    return DBFGetFieldIndex(h(handle_), name.toLatin1().constData());
}

QStringList DbfTable::fieldNames() const
{
    QStringList out;
    if (!handle_)
        return out;
    const int n = DBFGetFieldCount(h(handle_));
    for (int i = 0; i < n; ++i) {
        char fieldName[XBASE_FLDNAME_LEN_READ + 1] = {};
        DBFGetFieldInfo(h(handle_), i, fieldName, nullptr, nullptr);
        out << QString::fromLatin1(fieldName);
    }
    return out;
}

bool DbfTable::isDeleted(int record) const { return handle_ && DBFIsRecordDeleted(h(handle_), record); }

std::optional<QString> DbfTable::value(int record, int field) const
{
    if (!handle_ || field < 0 || record < 0 || record >= recordCount())
        return std::nullopt;
    if (DBFIsAttributeNULL(h(handle_), record, field))
        return std::nullopt;
    const char *s = DBFReadStringAttribute(h(handle_), record, field);
    if (!s)
        return std::nullopt;
    return QString::fromLatin1(s);
}

QString findTableFile(const QString &dir, const QString &tableName)
{
    const QDir d(paths::native(dir));
    const QString wanted = tableName + QStringLiteral(".dbf");
    for (const QString &f : d.entryList(QDir::Files | QDir::Hidden))
        if (f.compare(wanted, Qt::CaseInsensitive) == 0)
            return d.filePath(f);
    return {};
}
