#include "ui/Grid.h"

#include <algorithm>
#include <utility>

#include "base/Conversions.h"

namespace dravik::ui {

double GridSource::number(int row, int column) const {
    return leadingNumber(text(row, column));
}

void Grid::setSource(std::shared_ptr<const GridSource> source) {
    source_ = std::move(source);
    order_.clear();
    changed(Change::Items);
    select(row_, column_, rowSelection_, columnSelection_);
}

int Grid::rows() const {
    return source_ ? source_->rows() : 0;
}

int Grid::columns() const {
    return source_ ? source_->columns() : 0;
}

std::string Grid::text(int row, int column) const {
    if (row < 0 || row >= rows() || column < 0 || column >= columns()) return {};
    return source_->text(sourceRow(row), column);
}

template <class KeyOf>
std::vector<KeyedRow> Grid::keyedRows(KeyOf keyOf) const {
    std::vector<KeyedRow> keyed;
    keyed.reserve(static_cast<std::size_t>(rows()));
    for (int row = 1; row < rows(); ++row) keyed.push_back({keyOf(sourceRow(row)), sourceRow(row)});
    return keyed;
}

void Grid::show(const std::vector<KeyedRow>& keyed) {
    if (keyed.empty()) return;
    order_.assign(1, 0);
    order_.reserve(keyed.size() + 1);
    for (const KeyedRow& row : keyed) order_.push_back(row.row);
    changed(Change::Items);
}

void Grid::sortByNumber(int column) {
    if (column < 0 || column >= columns()) return;
    auto keyed = keyedRows([&](int row) { return orderKey(source_->number(row, column)); });
    sortByKey(keyed);
    show(keyed);
}

void Grid::sortByText(int column) {
    if (column < 0 || column >= columns()) return;
    auto keyed = keyedRows([&](int row) { return orderKey(source_->text(row, column)); });
    sortByKey(keyed);
    // Long texts that begin alike are still in the order in which they came.
    for (auto first = keyed.begin(); first != keyed.end();) {
        const auto last =
            std::find_if(first, keyed.end(), [&](const KeyedRow& row) { return row.key != first->key; });
        if (isCutKey(first->key))
            std::stable_sort(first, last, [&](const KeyedRow& a, const KeyedRow& b) {
                return source_->text(a.row, column) < source_->text(b.row, column);
            });
        first = last;
    }
    show(keyed);
}

void Grid::select(int row, int column, int rowSelection, int columnSelection) {
    const auto cutRow = [&](int value) {
        return std::clamp(value, std::min(1, rows() - 1), std::max(rows() - 1, 0));
    };
    const auto cutColumn = [&](int value) { return std::clamp(value, 0, std::max(columns() - 1, 0)); };
    row_ = std::max(cutRow(row), 0);
    column_ = cutColumn(column);
    rowSelection_ = std::max(cutRow(rowSelection), 0);
    columnSelection_ = cutColumn(columnSelection);
    changed(Change::Selection);
}

CellAlign Grid::align(int column) const {
    const auto found = aligned_.find(column);
    return found == aligned_.end() ? CellAlign::Right : found->second;
}

void Grid::setAlign(int column, CellAlign align) {
    if (this->align(column) == align) return;
    aligned_[column] = align;
    changed(Change::Appearance);
}

}  // namespace dravik::ui
