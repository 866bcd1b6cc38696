#pragma once
// The menu bar of the panels: the program's menu as every panel has it, with each panel's own
// differences. Which window an entry opens is told in menu_windows_qt.h.
#include <QList>
#include <QString>
#include <QStringList>
#include <map>

class QAction;
class QMainWindow;

namespace panelmenu {

struct Rename {
    QString name;
    QString caption;
};
struct Extra {
    QString after;
    QString name;
    QString caption;
};

// Fills the window's menu bar. Entries named in omit are left out, renamed ones get their name
// and caption from renames (name -> {new name, caption}), extra ones follow after the named.
// Gives every entry made, by name.
std::map<QString, QAction *> build(QMainWindow *window, const QStringList &omit,
                                   const std::map<QString, Rename> &renames, const QList<Extra> &extras);

} // namespace panelmenu
