#pragma once
// The common frame of all user data files: which kind the next load or save handles, the
// name chosen for each kind, listing a kind's files, the name rule of a save, the check that
// protects an existing file, and the dispatch from a kind to its reader and writer.
#include "core/shared_state.h"

#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <functional>

// The kind (1..15) the next load or save handles; it stays until another window sets another.
extern int16_t fileType;
// Refines kind 3: 1 ILG, 2 Aero.
extern int16_t fileSubtype;
// The bare file name last picked or typed for each kind; index 0 is the converters' source.
extern std::array<QString, kFileKinds + 1> chosenFileTable;

constexpr int kMemFileKind = 8;
constexpr int kFtlFileKind = 3;
constexpr int kRttyFileKind = 13;

// fileType, fileSubtype and chosenFileTable back to their start state (tests).
void resetFileStore();

// fullDirTable(fileType) + chosenFileTable(fileType): the file every reader and writer opens.
QString chosenFilePath();

// --- patterns and listings ---

// name against a pattern of "*" and "?" with ";" between alternatives, without regard to case.
bool matchesPattern(const QString &name, const QString &pattern);

// Make the kind's pattern ready for a listing: kind 8 gets the digit of rxType as its fifth
// character, kind 3 becomes "ILG*.FTL" or "AERO*.FTL" by fileSubtype. Changes the table in place.
void preparePattern(int kind);
// Kind 8's default name gets the digit of rxType as its fifth character, in place.
void prepareDefaultName(int kind);

// The files of the kind's sub-directory that match its pattern, in name order without regard
// to case, as settings text (paths::toSettingsText). A missing sub-directory is run-time error
// 76. Neither listing shows what an interrupted save left behind.
QStringList listKindFiles(int kind);
// Every file of a directory, whatever its name, in name order without regard to case; a
// directory that is not there lists nothing.
QStringList dirFiles(const QString &dir);

// Delete a file: a missing directory is run-time error 76, a missing file 53.
void killFile(const QString &path);

// --- saving ---

// The rule a typed save name must pass: not empty, the kind's prefix and ".TXT" in either case,
// the last "." before position 38.
bool isValidSaveName(const QString &name, int kind);

// askUser False: delete the file of the chosen name without looking, result True.
// askUser True: where a file of exactly that name (case counts) is in the sub-directory, ask
// whether to replace it; result True when nothing was asked or the last answer was Yes.
void CheckExistingFile(bool &result, bool askUser);

// --- reader and writer dispatch ---

using FileAction = std::function<void()>;
// Subsystems plug in the reader and writer of their kind. Kind 3 has a reader per subtype.
// The writer of kind 13 opens its file for appending and leaves it open.
void registerReader(int kind, FileAction reader, int subtype = 0);
void registerWriter(int kind, FileAction writer);
// Runs the reader of fileType (by fileSubtype for kind 3); false where there is none.
bool runReader();
bool runWriter();

// --- the user's text editor ---

// The program and arguments that open path in the user's editor: the first line of
// "alttxted.ini" under dirPath when that file exists, else the platform's plain text editor.
QStringList editorCommand(const QString &path);
// Starts the editor on path without waiting. A program that cannot be started is run-time
// error 53, as with any program that is not there.
void startEditor(const QString &path);
