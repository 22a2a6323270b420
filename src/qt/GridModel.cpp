#include "qt/GridModel.h"

#include <algorithm>

#include "qt/Guard.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

int alignment(ui::CellAlign align) {
    const auto across = align == ui::CellAlign::Left     ? Qt::AlignLeft
                        : align == ui::CellAlign::Center ? Qt::AlignHCenter
                                                         : Qt::AlignRight;
    return static_cast<int>(across | Qt::AlignVCenter);
}

}  // namespace

void GridModel::refill() {
    beginResetModel();
    endResetModel();
}

void GridModel::detach() {
    beginResetModel();
    attached_ = false;
    endResetModel();
}

int GridModel::rowCount(const QModelIndex& parent) const {
    if (!attached_ || parent.isValid() || !grid_.redraw()) return 0;
    return std::max(grid_.rows() - 1, 0);
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return !attached_ || parent.isValid() || !grid_.redraw() ? 0 : grid_.columns();
}

QString GridModel::text(int row, int column) const {
    QString result;
    guarded([&] { result = qtText(grid_.text(row, column)); });
    return result;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!attached_ || !index.isValid()) return {};
    if (role == Qt::DisplayRole) return text(index.row() + 1, index.column());
    if (role == Qt::TextAlignmentRole) return alignment(grid_.align(index.column()));
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (!attached_ || orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return text(0, section);
    if (role == Qt::TextAlignmentRole) return alignment(grid_.align(section));
    return {};
}

}  // namespace dravik::qt
