#pragma once
// A dBASE table opened read-only through shapelib: field values by record and field, a Null
// as no value. Text is taken one byte one character, as our other files are.
#include <QString>
#include <QStringList>
#include <optional>

class DbfTable {
public:
    DbfTable() = default;
    ~DbfTable();
    DbfTable(const DbfTable &) = delete;
    DbfTable &operator=(const DbfTable &) = delete;

    // False where the file is missing or is no table shapelib can read.
    bool open(const QString &path);
    void close();
    bool isOpen() const { return handle_ != nullptr; }

    // The records the file holds: a header that claims more than the file has room for is
    // believed only as far as the file goes.
    int recordCount() const { return records_; }
    // The field of that name without regard to case, or -1.
    int fieldIndex(const QString &name) const;
    QStringList fieldNames() const;
    bool isDeleted(int record) const;
    // The value as shapelib gives it (blanks around it cut), or nothing for a Null.
    std::optional<QString> value(int record, int field) const;

private:
    void *handle_ = nullptr; // DBFHandle
    int records_ = 0;
};

// The file of a table name (e.g. "ILGSDATA") in dir: "<name>.dbf" without regard to case; empty
// where there is none.
QString findTableFile(const QString &dir, const QString &tableName);
