#pragma once
// What the Last 20 and Marked windows share: their two grids (" NR" and " FREQUENCY"), the grid
// filled from a list, and the frequency text of the open panel.
#include "log/small_lists.h"

#include <QString>

class QFont;
class QWidget;
class TextGrid;

namespace smallwin {

struct ListGrids {
    TextGrid *titles = nullptr;
    TextGrid *list = nullptr;
};
// The title row and a grid of twenty rows, the number column 400 twips wide.
ListGrids makeListGrids(QWidget *parent, const char *gridName);
// Rows 0..19 as number and frequency, newest first.
void fillListGrid(TextGrid *grid, const smalllists::FrequencyList &list);
// The fixed-pitch font, made smaller where needed so that widest fits a column of twips: the
// columns keep their widths whatever font the system has.
QFont fittedFont(const QString &widest, int twips);
// The frequency box of the panel of rxType; empty without a receiver.
QString panelFrequencyText();

} // namespace smallwin
