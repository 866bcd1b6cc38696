#include "text_grid.h"
#include "form_position.h"

#include <QHeaderView>
#include <algorithm>

TextGridModel::TextGridModel(int columns, QObject *parent)
    : QAbstractTableModel(parent), columns_(columns), rows_(1, QStringList(columns))
{
}

int TextGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : sourceCount_ + int(rows_.size());
}

int TextGridModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : columns_; }

const QStringList &TextGridModel::row(int r) const
{
    if (r >= sourceCount_)
        return rows_[size_t(r - sourceCount_)];
    if (r != cachedRow_) {
        cached_ = fitted(source_(r));
        cachedRow_ = r;
    }
    return cached_;
}

QVariant TextGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole))
        return {};
    return row(index.row())[index.column()];
}

QStringList TextGridModel::fitted(QStringList row) const
{
    row.resize(columns_);
    return row;
}

void TextGridModel::materialize()
{
    if (!source_)
        return;
    std::vector<QStringList> all;
    all.resize(size_t(sourceCount_));
    for (int r = 0; r < sourceCount_; ++r)
        all[size_t(r)] = fitted(source_(r));
    all.insert(all.end(), std::make_move_iterator(rows_.begin()), std::make_move_iterator(rows_.end()));
    rows_ = std::move(all);
    source_ = {};
    sourceCount_ = 0;
    cachedRow_ = -1;
    cached_.clear();
}

void TextGridModel::clear()
{
    beginResetModel();
    source_ = {};
    sourceCount_ = 0;
    cachedRow_ = -1;
    cached_.clear();
    rows_.assign(1, QStringList(columns_));
    endResetModel();
}

void TextGridModel::insert(int i, const QStringList &row)
{
    const int at = std::clamp(i, 0, rowCount());
    if (at < sourceCount_)
        materialize();
    beginInsertRows({}, at, at);
    rows_.insert(rows_.begin() + (at - sourceCount_), fitted(row));
    endInsertRows();
}

void TextGridModel::append(const QStringList &row) { insert(rowCount(), row); }

void TextGridModel::assign(std::vector<QStringList> rows)
{
    beginResetModel();
    source_ = {};
    sourceCount_ = 0;
    cachedRow_ = -1;
    cached_.clear();
    rows_ = std::move(rows);
    for (QStringList &r : rows_)
        if (r.size() != columns_)
            r.resize(columns_);
    if (rows_.empty())
        rows_.assign(1, QStringList(columns_));
    endResetModel();
}

void TextGridModel::assignSource(int count, std::function<QStringList(int)> rowAt)
{
    if (count <= 0 || !rowAt) {
        assign({});
        return;
    }
    beginResetModel();
    rows_.clear();
    source_ = std::move(rowAt);
    sourceCount_ = count;
    cachedRow_ = -1;
    cached_.clear();
    endResetModel();
}

void TextGridModel::replace(int r, const QStringList &row)
{
    if (r < 0 || r >= rowCount())
        return;
    if (r < sourceCount_)
        materialize();
    rows_[size_t(r - sourceCount_)] = fitted(row);
    emit dataChanged(index(r, 0), index(r, columns_ - 1));
}

void TextGridModel::setText(int row, int col, const QString &text)
{
    if (row < 0 || row >= rowCount() || col < 0 || col >= columns_)
        return;
    if (row < sourceCount_)
        materialize();
    rows_[size_t(row - sourceCount_)][col] = text;
    emit dataChanged(index(row, col), index(row, col));
}

QString TextGridModel::text(int r, int col) const
{
    if (r < 0 || r >= rowCount() || col < 0 || col >= columns_)
        return {};
    return row(r)[col];
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
