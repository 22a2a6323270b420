#include "widgets/Grid.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/Conversions.h"

namespace dravik {

double GridSource::number(int row, int column) const { return leadingNumber(text(row, column)); }

void Grid::setSource(std::shared_ptr<const GridSource> source) {
    source_ = std::move(source);
    order_.clear();
    changed(Change::Items);
    select(row_, column_, rowSelection_, columnSelection_);
}

int Grid::rows() const { return source_ ? source_->rows() : 0; }

int Grid::columns() const { return source_ ? source_->columns() : 0; }

std::string Grid::text(int row, int column) const {
    if (row < 0 || row >= rows() || column < 0 || column >= columns()) return {};
    return source_->text(sourceRow(row), column);
}

template <class Less>
void Grid::sort(Less less) {
    if (rows() < 2) return;
    if (order_.empty()) {
        order_.resize(static_cast<std::size_t>(rows()));
        std::iota(order_.begin(), order_.end(), 0);
    }
    std::stable_sort(order_.begin() + 1, order_.end(), less);
    changed(Change::Items);
}

void Grid::sortByNumber(int column) {
    if (column < 0 || column >= columns()) return;
    std::vector<double> keys(static_cast<std::size_t>(rows()));
    for (int row = 1; row < rows(); ++row) keys[static_cast<std::size_t>(row)] = source_->number(row, column);
    sort([&](std::int32_t a, std::int32_t b) {
        return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
    });
}

void Grid::sortByText(int column) {
    if (column < 0 || column >= columns()) return;
    std::vector<std::string> keys(static_cast<std::size_t>(rows()));
    for (int row = 1; row < rows(); ++row) keys[static_cast<std::size_t>(row)] = source_->text(row, column);
    sort([&](std::int32_t a, std::int32_t b) {
        return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
    });
}

void Grid::select(int row, int column, int rowSelection, int columnSelection) {
    const auto cutRow = [&](int value) { return std::clamp(value, std::min(1, rows() - 1), std::max(rows() - 1, 0)); };
    const auto cutColumn = [&](int value) { return std::clamp(value, 0, std::max(columns() - 1, 0)); };
    row_ = std::max(cutRow(row), 0);
    column_ = cutColumn(column);
    rowSelection_ = std::max(cutRow(rowSelection), 0);
    columnSelection_ = cutColumn(columnSelection);
    changed(Change::Selection);
}

bool Grid::centered(int column) const {
    return std::find(centered_.begin(), centered_.end(), column) != centered_.end();
}

void Grid::setCentered(int column) {
    if (centered(column)) return;
    centered_.push_back(column);
    changed(Change::Appearance);
}

}  // namespace dravik
