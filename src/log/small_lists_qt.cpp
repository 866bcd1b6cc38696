#include "small_lists_qt.h"
#include "core/frmWelcome.h"
#include "core/numtext.h"
#include "core/shared_state.h"
#include "ui/widgets/text_grid.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>

namespace smallwin {

namespace {
constexpr int kNumberTwips = 400;
constexpr int kFrequencyTwips = 1300;
} // namespace

QFont fittedFont(const QString &widest, int twips)
{
    QFont f = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    for (int px = QFontInfo(f).pixelSize(); px > 8; --px) {
        f.setPixelSize(px);
        if (QFontMetrics(f).horizontalAdvance(widest) + 6 <= twipsToPixels(twips))
            break;
    }
    return f;
}

ListGrids makeListGrids(QWidget *parent, const char *gridName)
{
    const QFont fixed = fittedFont(QStringLiteral(" NR"), kNumberTwips);
    const int rowHeight = QFontMetrics(fixed).height() + 4;
    ListGrids g;
    g.titles = new TextGrid(TextGrid::Titles, {kNumberTwips, kFrequencyTwips}, fixed, rowHeight + 2, parent,
                            {QStringLiteral(" NR"), QStringLiteral(" FREQUENCY")});
    g.titles->setObjectName(QStringLiteral("grdTitles"));
    g.list = new TextGrid(TextGrid::List, {kNumberTwips, kFrequencyTwips}, fixed, rowHeight, parent);
    g.list->setObjectName(QLatin1String(gridName));
    g.list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    g.list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const int width = g.titles->columnsWidth() + 2 * g.list->frameWidth();
    g.titles->setFixedWidth(width);
    g.list->setFixedSize(width, smalllists::kListShown * rowHeight + 2 * g.list->frameWidth());
    return g;
}

void fillListGrid(TextGrid *grid, const smalllists::FrequencyList &list)
{
    TextGridModel *rows = grid->rows();
    while (rows->rowCount() < smalllists::kListShown)
        rows->append({});
    for (int i = 0; i < smalllists::kListShown; ++i)
        rows->replace(i, {numtext::strBlank(i), list[size_t(i)]});
}

QString panelFrequencyText()
{
    if (rxType < rxAR7030 || rxType > rxNRD545)
        return {};
    frmWelcome *w = frmWelcome::instance();
    RxPanel *p = w ? w->hub.panel() : nullptr;
    return p ? p->frequencyText() : QString();
}

} // namespace smallwin
