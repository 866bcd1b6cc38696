#pragma once
// A temporary data directory with the shared block pointed at it.
#include "testutil.h"
#include "core/shared_state.h"
#include "core/runtime_error.h"
#include "data/file_store.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>

struct DataDir {
    QTemporaryDir tmp;
    DataDir()
    {
        resetFileStore();
        dirPath = tmp.path() + "/";
        computeFullDirTable();
    }
    QString path(const QString &rel) const { return tmp.path() + "/" + rel; }
    void mkdir(const QString &rel) const { QDir(tmp.path()).mkpath(rel); }
    void put(const QString &rel, const QByteArray &bytes = "x\r\n") const { writeFile(path(rel), bytes); }
    bool has(const QString &rel) const { return QFile::exists(path(rel)); }
    // Every file under the directory, as "sub/name", sorted.
    QStringList files(const QString &sub) const
    {
        return QDir(path(sub)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

