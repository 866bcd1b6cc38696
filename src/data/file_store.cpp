#include "file_store.h"
#include "core/numtext.h"
#include "core/paths.h"
#include "core/runtime_error.h"
#include "core/textfile.h"
#include "memory/mem_file.h"
#include "ui/facades.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

int16_t fileType = 0;
int16_t fileSubtype = 0;
std::array<QString, kFileKinds + 1> chosenFileTable;

void resetFileStore()
{
    fileType = 0;
    fileSubtype = 0;
    for (auto &s : chosenFileTable)
        s.clear();
}

QString chosenFilePath()
{
    if (fileType < 0 || fileType > kFileKinds)
        throw RuntimeError::subscriptOutOfRange();
    return fullDirTable[fileType] + chosenFileTable[fileType];
}

// --- patterns and listings ---

namespace {
bool sameLetter(QChar a, QChar b) { return a == b || a.toCaseFolded() == b.toCaseFolded(); }

bool wildMatch(const QString &name, qsizetype n, const QString &pat, qsizetype p)
{
    while (p < pat.size()) {
        const QChar c = pat[p];
        if (c == u'*') {
            while (p < pat.size() && pat[p] == u'*')
                ++p;
            if (p == pat.size())
                return true;
            for (qsizetype k = n; k <= name.size(); ++k)
                if (wildMatch(name, k, pat, p))
                    return true;
            return false;
        }
        if (n >= name.size())
            return false;
        if (c != u'?' && !sameLetter(c, name[n]))
            return false;
        ++n;
        ++p;
    }
    return n == name.size();
}

void sortNames(QStringList &names)
{
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
}

// The names as settings text, as chosenFileTable keeps them; what an interrupted save left
// behind is no file of the listener's.
QStringList filesIn(const QDir &d)
{
    QStringList names;
    for (const QString &n : d.entryList(QDir::Files | QDir::NoDotAndDotDot, QDir::NoSort))
        if (!textfile::isSaveLeftover(n))
            names << paths::toSettingsText(n);
    sortNames(names);
    return names;
}

QString rxDigit() { return numtext::format(rxType, QStringLiteral("0")); }

void putRxDigit(QString &s)
{
    if (s.size() >= 5)
        s.replace(4, 1, rxDigit().left(1));
}

void requireKind(int kind)
{
    if (kind < 0 || kind > kFileKinds)
        throw RuntimeError::subscriptOutOfRange();
}
} // namespace

bool matchesPattern(const QString &name, const QString &pattern)
{
    const QStringList alternatives = pattern.split(u';', Qt::SkipEmptyParts);
    return std::any_of(alternatives.begin(), alternatives.end(),
                       [&](const QString &p) { return wildMatch(name, 0, p.trimmed(), 0); });
}

void preparePattern(int kind)
{
    requireKind(kind);
    if (kind == kMemFileKind)
        putRxDigit(patternTable[kMemFileKind]);
    else if (kind == kFtlFileKind && fileSubtype == 1)
        patternTable[kFtlFileKind] = QStringLiteral("ILG*.FTL");
    else if (kind == kFtlFileKind && fileSubtype == 2)
        patternTable[kFtlFileKind] = QStringLiteral("AERO*.FTL");
}

void prepareDefaultName(int kind)
{
    requireKind(kind);
    if (kind == kMemFileKind)
        putRxDigit(defaultNameTable[kMemFileKind]);
}

QStringList listKindFiles(int kind)
{
    requireKind(kind);
    const QDir d(paths::native(fullDirTable[kind]));
    if (!d.exists())
        throw RuntimeError::pathNotFound();
    QStringList out;
    for (const QString &n : filesIn(d))
        if (matchesPattern(n, patternTable[kind]))
            out << n;
    return out;
}

QStringList dirFiles(const QString &dir)
{
    const QDir d(paths::native(dir));
    return d.exists() ? filesIn(d) : QStringList();
}

void killFile(const QString &path)
{
    const QString p = paths::native(path);
    const QFileInfo fi(p);
    if (!fi.absoluteDir().exists())
        throw RuntimeError::pathNotFound();
    if (!fi.isFile())
        throw RuntimeError::fileNotFound();
    if (!QFile::remove(p))
        throw RuntimeError::pathFileAccess();
}

// --- saving ---

bool isValidSaveName(const QString &name, int kind)
{
    requireKind(kind);
    if (name.isEmpty())
        return false;
    if (name.left(4).toUpper() != prefixTable[kind])
        return false;
    if (name.right(4).toUpper() != QLatin1String(".TXT"))
        return false;
    const qsizetype lastDot = name.lastIndexOf(u'.') + 1; // position from 1, 0 when none
    return lastDot < 38;
}

void CheckExistingFile(bool &result, bool askUser)
{
    const QString dir = fullDirTable[fileType];
    const QString name = chosenFileTable[fileType];
    // Every writer that follows replaces its file atomically, so the old file is not deleted
    // here: it stands until the new one is whole, and a failed save loses nothing.
    if (!askUser) {
        result = true;
        return;
    }
    bool asked = false;
    bool lastYes = false;
    for (const QString &listed : dirFiles(dir)) {
        if (listed != name) // case counts here: another case is another name
            continue;
        asked = true;
        const int answer = ui::MsgBox(QStringLiteral("This file already exist.\nDo you want to replace it ?"),
                                      ui::vbYesNoCancel + ui::vbQuestion, QStringLiteral("Save File"));
        lastYes = answer == ui::vbYes;
        if (!lastYes)
            ui::MsgBox(QStringLiteral("File save action aborted"), ui::vbInformation, QStringLiteral("Save File"));
    }
    result = !asked || lastYes;
}

// --- reader and writer dispatch ---

namespace {
struct Registry {
    std::array<FileAction, kFileKinds + 1> readers;
    std::array<FileAction, kFileKinds + 1> writers;
    std::array<FileAction, 3> ftlReaders; // by fileSubtype 1, 2
    Registry()
    {
        readers[kMemFileKind] = [] { loadMemFile(fullDirTable[fileType], chosenFileTable[fileType]); };
        writers[kMemFileKind] = [] { saveMemFile(fullDirTable[fileType], chosenFileTable[fileType]); };
    }
};

Registry &registry()
{
    static Registry r;
    return r;
}
} // namespace

void registerReader(int kind, FileAction reader, int subtype)
{
    if (kind < 1 || kind > kFileKinds)
        throw RuntimeError::subscriptOutOfRange();
    if (kind == kFtlFileKind && (subtype == 1 || subtype == 2))
        registry().ftlReaders[size_t(subtype)] = std::move(reader);
    else
        registry().readers[size_t(kind)] = std::move(reader);
}

void registerWriter(int kind, FileAction writer)
{
    if (kind < 1 || kind > kFileKinds)
        throw RuntimeError::subscriptOutOfRange();
    registry().writers[size_t(kind)] = std::move(writer);
}

bool runReader()
{
    if (fileType < 1 || fileType > kFileKinds || fileType == kRttyFileKind)
        return false;
    FileAction f;
    if (fileType == kFtlFileKind)
        f = (fileSubtype == 1 || fileSubtype == 2) ? registry().ftlReaders[size_t(fileSubtype)] : FileAction();
    else
        f = registry().readers[size_t(fileType)];
    if (!f)
        return false;
    f();
    return true;
}

bool runWriter()
{
    if (fileType < 1 || fileType > kFileKinds)
        return false;
    const FileAction f = registry().writers[size_t(fileType)];
    if (!f)
        return false;
    f();
    return true;
}

// --- the user's text editor ---

namespace {
// A command line in words; double quotes keep blanks inside a word.
QStringList splitCommandLine(const QString &line)
{
    QStringList words;
    QString word;
    bool quoted = false, inWord = false;
    for (QChar c : line) {
        if (c == u'"') {
            quoted = !quoted;
            inWord = true;
        } else if (!quoted && (c == u' ' || c == u'\t')) {
            if (inWord)
                words << word;
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words << word;
    return words;
}

QStringList platformEditor()
{
#if defined(Q_OS_WIN)
    return {QStringLiteral("notepad.exe")};
#elif defined(Q_OS_MACOS)
    return {QStringLiteral("open"), QStringLiteral("-t")};
#else
    return {QStringLiteral("xdg-open")};
#endif
}
} // namespace

QStringList editorCommand(const QString &path)
{
    QStringList cmd;
    const QString ini = paths::native(dirPath + QStringLiteral("alttxted.ini"));
    if (QFileInfo(ini).isFile()) {
        const QStringList lines = textfile::splitLines(textfile::readAll(ini));
        if (!lines.isEmpty())
            cmd = splitCommandLine(lines.first());
    }
    if (cmd.isEmpty())
        cmd = platformEditor();
    cmd << paths::native(path);
    return cmd;
}

void startEditor(const QString &path)
{
    const QStringList cmd = editorCommand(path);
    if (!ui::startProgram(cmd.first(), cmd.mid(1)))
        throw RuntimeError::fileNotFound();
}
