// A grid's sorts against the library's stable sort, and what a new table leaves of the one before.

#include <numeric>

#include "support/Testing.h"
#include "ui/Grid.h"

namespace dravik {

using namespace ui;
namespace {

// Column 0 holds the source row, column 1 the texts, column 2 the numbers.
class KeySource : public GridSource {
  public:
    KeySource(std::vector<std::string> texts, std::vector<double> numbers)
        : texts_(std::move(texts)), numbers_(std::move(numbers)) {}
    int rows() const override { return static_cast<int>(texts_.size()); }
    int columns() const override { return 3; }
    std::string text(int row, int column) const override {
        return column == 1 ? texts_[static_cast<std::size_t>(row)] : std::to_string(row);
    }
    double number(int row, int) const override { return numbers_[static_cast<std::size_t>(row)]; }

  private:
    std::vector<std::string> texts_;
    std::vector<double> numbers_;
};

std::vector<int> shownRows(const Grid& grid) {
    std::vector<int> rows;
    for (int row = 1; row < grid.rows(); ++row) rows.push_back(std::stoi(grid.text(row, 0)));
    return rows;
}

// One sort after the other, so that the second sees an order that is not the source's.
TEST(RowOrder, SortsTextsByTheirBytesAndNumbersByValueWithTiesInTheirOrder) {
    const std::vector<std::string> someTexts = {
        "",          "A",         "a",         "AB",        "\xC3\xA9",
        "A\x01",     "seven77",   "eight888",  "eight889",  "eight8",
        "long text", "long texu", "long text", "\xFF\xFE!", std::string("A\0", 2)};
    const std::vector<double> someNumbers = {0, -0.0, 1, -1, 0.5, -1e300, 1e300, 99998, 3.25, -7.5, 1e-310};
    std::mt19937 random(3);
    std::vector<std::string> texts;
    std::vector<double> numbers;
    for (int i = 0; i < 700; ++i) {
        texts.push_back(someTexts[random() % someTexts.size()]);
        numbers.push_back(someNumbers[random() % someNumbers.size()]);
    }
    Grid grid("grid");
    grid.setSource(std::make_shared<KeySource>(texts, numbers));

    std::vector<int> expected(texts.size() - 1);
    std::iota(expected.begin(), expected.end(), 1);
    const auto sortedBy = [&](const auto& keys) {
        std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
            return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
        });
        return expected;
    };
    grid.sortByText(1);
    EXPECT_EQ(shownRows(grid), sortedBy(texts));
    grid.sortByNumber(2);
    EXPECT_EQ(shownRows(grid), sortedBy(numbers));
    grid.sortByText(7);
    EXPECT_EQ(shownRows(grid), expected) << "there is no such column";
    EXPECT_EQ(grid.text(0, 1), texts[0]) << "the heading stays";
    grid.setSource(std::make_shared<KeySource>(std::vector<std::string>{"heading", "x", "a"}, numbers));
    EXPECT_EQ(shownRows(grid), (std::vector{1, 2})) << "an order belongs to the table that was sorted";
}

TEST(RowOrder, CurrentCellAndSelectionAreCutToANewSource) {
    const auto cells = [](const Grid& grid) {
        return std::vector{grid.row(), grid.rowSelection(), grid.columnSelection()};
    };
    const auto table = [](std::size_t rows) {
        return std::make_shared<KeySource>(std::vector<std::string>(rows), std::vector<double>());
    };
    Grid grid("grid");
    grid.select(3, 1, 4, 1);
    EXPECT_EQ(grid.row(), 0);
    grid.setSource(table(11));
    grid.select(4, 1, 9, 0);
    grid.setSource(table(3));
    EXPECT_EQ(cells(grid), (std::vector{2, 2, 0}));
    grid.select(0, -1, 99, 99);
    EXPECT_EQ(cells(grid), (std::vector{1, 2, 2}));
}

}  // namespace
}  // namespace dravik
