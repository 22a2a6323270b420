#include "tool/RecordTable.h"

#include "base/Conversions.h"
#include "base/Failure.h"
#include "base/Text.h"

namespace dravik::tool {

bool isNumeric(const Cell& cell) {
    if (const auto* text = std::get_if<std::string>(&cell)) return dravik::isNumeric(*text);
    return std::holds_alternative<double>(cell);
}

double cellNumber(const Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) return *number;
    if (const auto* text = std::get_if<std::string>(&cell); text && dravik::isNumeric(*text))
        return leadingNumber(*text);
    throw Failure(RuntimeError::TypeMismatch);
}

std::string cellText(const Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) return numberText(*number);
    if (const auto* text = std::get_if<std::string>(&cell)) return *text;
    return {};
}

double RecordTable::number(int row, int column) const {
    return cellNumber(cell(row, column));
}

std::span<const std::int32_t> RecordTable::codes() const {
    if (codes_.empty() && upperRow() > 0) {
        std::vector<std::int32_t> codes;
        codes.reserve(static_cast<std::size_t>(upperRow()));
        for (int row = 1; row <= upperRow(); ++row) codes.push_back(toInt32(number(row, 1)));
        codes_ = std::move(codes);
    }
    return codes_;
}

std::span<const double> RecordTable::values() const {
    if (values_.empty() && upperRow() > 0) {
        std::vector<double> values;
        values.reserve(static_cast<std::size_t>(upperRow()));
        for (int row = 1; row <= upperRow(); ++row) values.push_back(number(row, 2));
        values_ = std::move(values);
    }
    return values_;
}

std::string RecordTable::character(int row) const {
    return characterOf(toInt32(number(row, 1)));
}

}  // namespace dravik::tool
