#include "text_grid.h"
#include "form_position.h"

#include <QHeaderView>
#include <algorithm>

TextGridModel::TextGridModel(int columns, QObject *parent)
    : QAbstractTableModel(parent), columns_(columns), rows_(1, QStringList(columns))
{
}

int TextGridModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(rows_.size()); }

int TextGridModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : columns_; }

QVariant TextGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole))
        return {};
    return rows_[size_t(index.row())][index.column()];
}

QStringList TextGridModel::fitted(QStringList row) const
{
    row.resize(columns_);
    return row;
}

void TextGridModel::clear()
{
    beginResetModel();
    rows_.assign(1, QStringList(columns_));
    endResetModel();
}

void TextGridModel::insert(int i, const QStringList &row)
{
    const int at = std::clamp(i, 0, int(rows_.size()));
    beginInsertRows({}, at, at);
    rows_.insert(rows_.begin() + at, fitted(row));
    endInsertRows();
}

void TextGridModel::append(const QStringList &row) { insert(int(rows_.size()), row); }

void TextGridModel::assign(std::vector<QStringList> rows)
{
    beginResetModel();
    rows_ = std::move(rows);
    for (QStringList &r : rows_)
        if (r.size() != columns_)
            r.resize(columns_);
    if (rows_.empty())
        rows_.assign(1, QStringList(columns_));
    endResetModel();
}

void TextGridModel::replace(int r, const QStringList &row)
{
    if (r < 0 || r >= int(rows_.size()))
        return;
    rows_[size_t(r)] = fitted(row);
    emit dataChanged(index(r, 0), index(r, columns_ - 1));
}

void TextGridModel::setText(int row, int col, const QString &text)
{
    if (row < 0 || row >= int(rows_.size()) || col < 0 || col >= columns_)
        return;
    rows_[size_t(row)][col] = text;
    emit dataChanged(index(row, col), index(row, col));
}

QString TextGridModel::text(int row, int col) const
{
    if (row < 0 || row >= int(rows_.size()) || col < 0 || col >= columns_)
        return {};
    return rows_[size_t(row)][col];
}

int twipsToPixels(int twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }

TextGrid::TextGrid(Kind kind, std::initializer_list<int> widthsTwips, const QFont &font, int rowHeight,
                   QWidget *parent, const QStringList &titles)
    : QTableView(parent), model_(new TextGridModel(int(widthsTwips.size()), this))
{
    setModel(model_);
    QFont f = font;
    f.setBold(kind == Titles);
    setFont(f);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(rowHeight);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setWordWrap(false);
    int c = 0;
    for (int w : widthsTwips)
        setColumnWidth(c++, twipsToPixels(w));
    if (kind == Titles) {
        setSelectionMode(QAbstractItemView::NoSelection);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        model_->replace(0, titles);
        setFixedHeight(rowHeight + 2 * frameWidth());
    } else {
        setSelectionBehavior(QAbstractItemView::SelectRows);
        setSelectionMode(QAbstractItemView::SingleSelection);
        setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    }
    connect(this, &QTableView::clicked, this,
            [this](const QModelIndex &i) { emit cellClicked(i.row(), i.column(), model_->text(i.row(), i.column())); });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &i) {
        emit cellDoubleClicked(i.row(), i.column(), model_->text(i.row(), i.column()));
    });
}

int TextGrid::columnsWidth() const
{
    int w = 0;
    for (int c = 0; c < model_->columnCount(); ++c)
        w += columnWidth(c);
    return w;
}
