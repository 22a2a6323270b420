// The answer of a record query: an immutable table, shared by whoever reads it and never copied.
//
// Row 0 holds the headings, rows 1 to upperRow() the records. Column 1 is the character's code, column 2 a
// sample's Distance or a character's trained count; the last 49 columns are the features, each 0 to 1.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace dravik::tool {

// Nothing, a number or a text.
using Cell = std::variant<std::monostate, double, std::string>;

// True for a number and for a text that is one number.
bool isNumeric(const Cell& cell);
// A number as its value, a text as the number it is; raises Type mismatch (13) for anything else.
double cellNumber(const Cell& cell);
// A number in its shortest decimal form, a text as it is, nothing as "".
std::string cellText(const Cell& cell);

class RecordTable {
  public:
    RecordTable() = default;
    RecordTable(const RecordTable&) = delete;
    RecordTable& operator=(const RecordTable&) = delete;
    virtual ~RecordTable() = default;

    // Upper bounds; -1 where a dimension has no element. upperRow() is the number of records when it is not
    // negative.
    virtual int upperRow() const noexcept = 0;
    virtual int upperColumn() const noexcept = 0;

    // Raises Subscript out of range (9) outside 0..upperRow() x 0..upperColumn().
    virtual Cell cell(int row, int column) const = 0;

    // The cell as a number; raises as cell() and cellNumber() do. Tools override it to save the detour over a
    // Cell.
    virtual double number(int row, int column) const;

    // Columns 1 and 2 of rows 1 to upperRow() in one piece, element 0 being row 1; the codes are checked
    // 32-bit integers. Raise as number() does, and Overflow (6) for a code out of range. The spans live as
    // long as the table.
    virtual std::span<const std::int32_t> codes() const;
    virtual std::span<const double> values() const;

    // The character that column 1 of a row stands for, as text.
    std::string character(int row) const;

    bool isEmpty() const noexcept { return upperRow() < 0 || upperColumn() < 0; }

  private:
    mutable std::vector<std::int32_t> codes_;
    mutable std::vector<double> values_;
};

// What a query returns: the table, or nothing when no record matches.
using RecordTablePtr = std::shared_ptr<const RecordTable>;

}  // namespace dravik::tool
