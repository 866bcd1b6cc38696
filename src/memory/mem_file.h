#pragma once
// Memory files: one line per cell, 0..lastMemoryIndex, CR LF ended, no header. A line is the
// cell's 35-character record directly followed by its 45-character tag.
#include <QByteArray>
#include <QIODevice>
#include <QString>

// What the memory window does around a load or a save. The window installs itself while it is
// open; without one the files are read and written all the same.
class MemFileView {
public:
    virtual ~MemFileView() = default;
    // Hourglass, commands off, grid cleared.
    virtual void memLoadBegins() {}
    // Cell i has been read: add its row.
    virtual void memRowLoaded(int /*i*/) {}
    // Commands on, the file name in the title grid, pointer back.
    virtual void memLoadEnds(const QString & /*fileName*/) {}
    virtual void memSaveBegins() {}
    virtual void memSaveEnds(const QString & /*fileName*/) {}
};
// Returns the view it replaced.
MemFileView *setMemFileView(MemFileView *v);
MemFileView *memFileView();

// The image as file bytes: every cell from 0 to lastMemoryIndex, record then tag. A cell
// never assigned stands as an empty line; any other is written at its 80 columns.
QByteArray memFileBytes();

// Fill the image from file bytes. The image is allocated anew first; lines past
// lastMemoryIndex are ignored, missing lines leave their cells empty. The 35th character
// (always a blank) is not read back; a line of 34 characters or fewer leaves the tag empty.
// Nothing is checked: a file of another model or kind loads without a word.
// Returns the number of cells read.
int readMemFile(const QByteArray &bytes, MemFileView *view = nullptr);
int readMemFile(QIODevice &in, MemFileView *view = nullptr);

// The path-level reader and writer: dir + name, where dir is the memory sub-directory and
// name the bare file name shown in the memory window. A missing directory is run-time error
// 76, a missing file 53; a writer that fails leaves the old file standing.
void loadMemFile(const QString &dir, const QString &name);
void saveMemFile(const QString &dir, const QString &name);
