// The records of a grid as a Qt table: row 0 of the grid is the heading. Virtual, nothing is copied.
#pragma once

#include <QAbstractTableModel>

#include "ui/Grid.h"

namespace dravik::qt {

class GridModel : public QAbstractTableModel {
  public:
    GridModel(const ui::Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {}

    // The grid's content is another one.
    void refill();
    // The grid is going away: the table is empty from now on.
    void detach();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString text(int row, int column) const;

    const ui::Grid& grid_;
    bool attached_ = true;
};

}  // namespace dravik::qt
