#include "mem_file.h"
#include "mem_record.h"
#include "core/shared_state.h"
#include "core/textfile.h"

namespace {
MemFileView *&currentView()
{
    static MemFileView *v = nullptr;
    return v;
}
MemFileView &viewOrNone(MemFileView *v)
{
    static MemFileView none;
    return v ? *v : none;
}
} // namespace

MemFileView *setMemFileView(MemFileView *v)
{
    std::swap(currentView(), v);
    return v;
}

MemFileView *memFileView() { return currentView(); }

QByteArray memFileBytes()
{
    QStringList lines;
    lines.reserve(lastMemoryIndex + 1);
    for (int i = 0; i <= lastMemoryIndex; ++i) {
        const QString &rec = memRecord[i].str();
        const QString &tag = memTag[i].str();
        // A cell that holds anything keeps its 80 columns, so the tag stands at position 36.
        if (rec.isEmpty() && tag.isEmpty())
            lines << QString();
        else
            lines << rec.leftJustified(kMemRecordWidth, u' ') + tag.leftJustified(kMemTagWidth, u' ');
    }
    return textfile::joinLines(lines);
}

namespace {
int fillImage(const QByteArray &bytes, MemFileView &v)
{
    const QStringList lines = textfile::splitLines(bytes);
    int i = 0;
    for (; i < lines.size() && i <= lastMemoryIndex; ++i) {
        const QString &line = lines[i];
        memRecord[i] = line.left(kMemRecordWidth - 1);
        if (line.size() > kMemRecordWidth - 1)
            memTag[i] = line.mid(kMemRecordWidth);
        v.memRowLoaded(i);
    }
    return i;
}
} // namespace

int readMemFile(const QByteArray &bytes, MemFileView *view)
{
    MemFileView &v = viewOrNone(view);
    allocateMemImage();
    v.memLoadBegins();
    return fillImage(bytes, v);
}

int readMemFile(QIODevice &in, MemFileView *view) { return readMemFile(in.readAll(), view); }

void loadMemFile(const QString &dir, const QString &name)
{
    MemFileView &v = viewOrNone(currentView());
    allocateMemImage();
    v.memLoadBegins();
    fillImage(textfile::readAll(dir + name), v);
    v.memLoadEnds(name);
}

void saveMemFile(const QString &dir, const QString &name)
{
    MemFileView &v = viewOrNone(currentView());
    v.memSaveBegins();
    textfile::writeAtomically(dir + name, memFileBytes());
    v.memSaveEnds(name);
}
