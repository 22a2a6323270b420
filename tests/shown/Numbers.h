// A grid's records, which are numbers, and how often they were asked for.
#pragma once

#include "ui/Grid.h"

namespace dravik::test {

using namespace ui;

class Numbers : public GridSource {
  public:
    Numbers(int rows, int columns) : rows_(rows), columns_(columns) {}
    int rows() const override { return rows_; }
    int columns() const override { return columns_; }
    std::string text(int row, int column) const override {
        ++asked;
        return row == 0 ? "Head " + std::to_string(column) : std::to_string(row * 100 + column);
    }
    mutable int asked = 0;

  private:
    int rows_;
    int columns_;
};

}  // namespace dravik::test
