// Saves that fail, and saves killed half-way: the old file stands byte for byte, and the
// failure is told with the number a listener knows.
#include "core/runtime_error.h"
#include "core/settings_files.h"
#include "core/shared_state.h"
#include "core/textfile.h"
#include "data/file_store.h"
#include "memory/mem_file.h"
#include "memory/mem_record.h"
#include "panels/rx320_panel_logic.h"
#include "testmain.h"
#include "testutil.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <cerrno>
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
constexpr int kCrashed = 252;

// Runs f in a child process with a file size limit (bytes, -1 none), as another user where we
// are root and asOther is set (so that permissions bite); returns the run-time error number it
// raised, 0 for none.
int inChild(const std::function<void()> &f, long limit, bool asOther)
{
    const pid_t pid = fork();
    if (pid == 0) {
        if (asOther && geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(250);
        if (limit >= 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit r{rlim_t(limit), rlim_t(limit)};
            setrlimit(RLIMIT_FSIZE, &r);
        }
        int code = 0;
        try {
            f();
        } catch (const RuntimeError &e) {
            code = e.number();
        } catch (...) {
            code = 251;
        }
        _exit(code);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : kCrashed;
}

// One writer of the program: the file it writes (below dirPath) and the bytes it writes there.
struct Writer {
    QString file;
    std::function<QByteArray()> bytes;
    std::function<void()> save;
};

Writer writer(const QString &name)
{
    if (name == "settings")
        return {"brelvox2.ini", settings::settingsText, settings::saveSettings};
    if (name == "positions")
        return {"formpositions.ini", settings::positionsText, settings::savePositions};
    if (name == "memory")
        return {"MEM/MEM_1T.TXT", memFileBytes, [] { saveMemFile(dirPath + "MEM\\", "MEM_1T.TXT"); }};
    const auto rx320 = [] { return rx320panel::settingsText(rx320panel::Settings{}); };
    return {"rx320settings.ini", rx320, [=] { textfile::writeAtomically(dirPath + rx320panel::kSettingsFile, rx320()); }};
}

void fillImage(const QString &tag)
{
    allocateMemImage();
    for (int i = 0; i <= lastMemoryIndex; ++i) {
        memRecord[i] = filledMemRecord({i, memHzText(5900 + i * 5), "1", "02", "@", "@", "128", "040", "0"});
        memTag[i] = tag + QString::number(i);
    }
}

QStringList allEntries(const QString &dir)
{
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}
} // namespace

class TestSave : public QObject {
    Q_OBJECT
private slots:
    // Each writer, with a file size limit, or a folder or file the user may not write.
    void failedSaveKeepsTheOldFile_data()
    {
        QTest::addColumn<QString>("writer");
        QTest::addColumn<long>("limit");      // bytes, -1 none
        QTest::addColumn<QString>("readOnly"); // "", "folder" or "file"
        QTest::addColumn<bool>("oldFile");     // a file stands there before
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("after"); // "old", "new", "none" or "any"
        QTest::newRow("settings, size limit") << "settings" << 8L << "" << true << 57 << "old";
        QTest::newRow("positions, size limit") << "positions" << 8L << "" << true << 57 << "old";
        QTest::newRow("memory, size limit") << "memory" << 8L << "" << true << 57 << "old";
        QTest::newRow("rx320, size limit") << "rx320" << 8L << "" << true << 57 << "old";
        QTest::newRow("positions, first save, size limit") << "positions" << 8L << "" << false << 57 << "none";
        QTest::newRow("settings, read-only file") << "settings" << -1L << "file" << true << 75 << "old";
        QTest::newRow("settings, read-only folder: in place") << "settings" << -1L << "folder" << true << 0 << "new";
        QTest::newRow("memory, read-only folder, size limit") << "memory" << 8L << "folder" << true << 57 << "any";
        QTest::newRow("rx320, read-only folder, no file") << "rx320" << -1L << "folder" << false << 75 << "none";
    }
    void failedSaveKeepsTheOldFile()
    {
        QFETCH(QString, writer);
        QFETCH(long, limit);
        QFETCH(QString, readOnly);
        QFETCH(bool, oldFile);
        QFETCH(int, error);
        QFETCH(QString, after);
        TestEnv env;
        QTemporaryDir tmp;
        QFile::setPermissions(tmp.path(), QFile::permissions(tmp.path()) | QFile::ExeOther | QFile::ReadOther);
        dirPath = tmp.path() + "/";
        lastMemoryIndex = 99;
        fillImage("new ");
        slotLt2Utc() = 2;
        formLeft[5] = 1234;
        const Writer w = ::writer(writer);
        const QString path = dirPath + w.file;
        const QString dir = QFileInfo(path).absolutePath();
        QDir().mkpath(dir);
        QByteArray old;
        for (int i = 0; i < 40; ++i)
            old += "the listener's own line " + QByteArray::number(i) + "\r\n";
        if (oldFile) {
            writeFile(path, old);
            QFile::setPermissions(path, readOnly == "file" ? QFile::ReadOwner | QFile::ReadOther
                                                            : QFile::Permissions(0x6666));
        }
        // the folder the user may not write, or may (and only the file is closed to him)
        if (!readOnly.isEmpty())
            QFile::setPermissions(dir, QFile::Permissions(readOnly == "folder" ? 0x5555 : 0x7777));
        const int got = inChild(w.save, limit, !readOnly.isEmpty());
        QFile::setPermissions(dir, QFile::Permissions(0x7755));
        QCOMPARE(got, error);
        if (after == "old")
            QCOMPARE(readFile(path), old);
        else if (after == "new")
            QCOMPARE(readFile(path), w.bytes());
        else if (after == "none")
            QVERIFY(!QFile::exists(path));
        QCOMPARE(allEntries(dir), after == "none" ? QStringList() : QStringList{QFileInfo(path).fileName()});
    }

    // The number told for each failure the system reports.
    void failureNumbers_data()
    {
        QTest::addColumn<int>("systemError");
        QTest::addColumn<bool>("opening");
        QTest::addColumn<int>("error");
        QTest::newRow("disk full") << ENOSPC << false << 61;
        QTest::newRow("disk full at open") << ENOSPC << true << 61;
        QTest::newRow("quota") << EDQUOT << false << 61;
        QTest::newRow("past the size limit") << EFBIG << false << 57;
        QTest::newRow("refused") << EACCES << true << 75;
        QTest::newRow("read-only file system") << EROFS << false << 75;
        QTest::newRow("unknown, writing") << 0 << false << 57;
        QTest::newRow("unknown, opening") << 0 << true << 75;
    }
    void failureNumbers()
    {
        QFETCH(int, systemError);
        QFETCH(bool, opening);
        QFETCH(int, error);
        const RuntimeError e = textfile::writeFailure(systemError, opening);
        QCOMPARE(e.number(), error);
        const QString texts[] = {"Device I/O error", "Disk full", "Path/File access error"};
        QCOMPARE(e.text(), texts[error == 57 ? 0 : error == 61 ? 1 : 2]);
        QVERIFY(textfile::isWriteFailure(e));
    }

    // A save killed at any moment leaves the old file or the new one, whole; what a kill between
    // writing and renaming leaves is never listed, and the next save of that file removes it.
    void killedSavesLeaveAWholeFile()
    {
        TestEnv env;
        QTemporaryDir tmp;
        dirPath = tmp.path() + "/";
        computeFullDirTable();
        rxType = rxNRD545;
        lastMemoryIndex = 999;
        fillImage("first ");
        const QByteArray a = memFileBytes();
        fillImage("second ");
        const QByteArray b = memFileBytes();
        const QString dir = dirPath + "MEM/", path = dir + "MEM_4K.TXT";
        QDir().mkpath(dir);
        textfile::writeAtomically(path, a);
        const auto ownLeftover = [&] { writeFile(path + ".~save-QtKiLl", b.left(1000)); };
        ownLeftover();
        writeFile(path + ".bak", "kept\r\n");
        writeFile(dir + "MEM_4X.TXT.~save-AbCdEf", "another file's\r\n");
        writeFile(path + ".backup", "the listener's own\r\n");
        preparePattern(8);
        auto *rng = QRandomGenerator::global();
        int leftoversSeen = 0;
        for (int round = 0; round < 300; ++round) {
            const pid_t pid = fork();
            if (pid == 0) {
                try {
                    for (int i = 0;; ++i)
                        textfile::writeAtomically(path, i % 2 ? a : b);
                } catch (...) {
                    _exit(1);
                }
            }
            usleep(rng->bounded(5, 3000));
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
            const QByteArray now = readFile(path);
            QVERIFY2(now == a || now == b, qPrintable(QString("round %1: %2 bytes").arg(round).arg(now.size())));
            const QStringList all = allEntries(dir);
            leftoversSeen += int(all.filter(QRegularExpression("^MEM_4K\\.TXT\\.~save-\\w{6}$")).size());
            QCOMPARE(listKindFiles(8), QStringList{"MEM_4K.TXT"});
            QCOMPARE(dirFiles(fullDirTable[8]), QStringList({"MEM_4K.TXT", "MEM_4K.TXT.backup", "MEM_4K.TXT.bak"}));
        }
        qInfo("leftovers seen after a kill: %d", leftoversSeen);
        ownLeftover();
        textfile::writeAtomically(path, a);
        QCOMPARE(allEntries(dir), QStringList({"MEM_4K.TXT", "MEM_4K.TXT.backup", "MEM_4K.TXT.bak", "MEM_4X.TXT.~save-AbCdEf"}));
    }
};

BRELVOX_TEST(TestSave)
#include "tst_save.moc"
