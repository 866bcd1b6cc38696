#pragma once
// A grid of text rows over a model of its own (no item per cell): fixed-pitch font, one fixed
// row height, column widths in twips, no headers, no editing. A list selects whole rows, one at
// a time; a title row is one row of bold titles that takes neither selection nor focus and has
// no scroll bars. Clicks come as row, column and the cell's text.
#include <QAbstractTableModel>
#include <QStringList>
#include <QTableView>
#include <functional>
#include <initializer_list>
#include <vector>

// Rows of texts with a fixed column count: a row shorter than that is padded with empty texts,
// a longer one cut. Empty, it still holds one blank row, as a cleared grid shows.
class TextGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit TextGridModel(int columns, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    // One blank row left.
    void clear();
    // At position i, or at the end where the grid is shorter.
    void insert(int i, const QStringList &row);
    void append(const QStringList &row);
    // Every row at once, in one reset of the views (a long list is filled in one step); no rows
    // leave the one blank row.
    void assign(std::vector<QStringList> rows);
    // The first count rows made by rowAt only when they are looked at (a long list is shown at
    // once, and only what is on screen is ever made); rows added later follow them. Changing one
    // of those rows makes them all. count 0 leaves the one blank row.
    void assignSource(int count, std::function<QStringList(int)> rowAt);
    void replace(int r, const QStringList &row);
    void setText(int row, int col, const QString &text);
    // Empty outside the grid.
    QString text(int row, int col) const;

private:
    QStringList fitted(QStringList row) const;
    const QStringList &row(int r) const;
    // The source's rows made and stored, before one of them changes.
    void materialize();
    int columns_;
    std::vector<QStringList> rows_; // after the source's rows, when there is a source
    std::function<QStringList(int)> source_;
    int sourceCount_ = 0;
    mutable int cachedRow_ = -1;
    mutable QStringList cached_;
};

// Twips to whole pixels, rounded.
int twipsToPixels(int twips);

class TextGrid : public QTableView {
    Q_OBJECT
public:
    enum Kind { List, Titles };
    // A column per width; titles, where given, fill the only row of a title row.
    TextGrid(Kind kind, std::initializer_list<int> widthsTwips, const QFont &font, int rowHeight,
             QWidget *parent = nullptr, const QStringList &titles = {});

    TextGridModel *rows() const { return model_; }
    QString text(int row, int col) const { return model_->text(row, col); }
    // The columns side by side, in pixels.
    int columnsWidth() const;

signals:
    void cellClicked(int row, int col, const QString &text);
    void cellDoubleClicked(int row, int col, const QString &text);

private:
    TextGridModel *model_;
};
