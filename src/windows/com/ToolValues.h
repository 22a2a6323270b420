// The tool contract's arrays and tables as COM values, and back.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tool/RecordTable.h"
#include "windows/com/Variant.h"

namespace dravik::com {

// How the elements of a list are stored: as themselves for compiled code, each as a VARIANT for scripts,
// which can read no other arrays.
enum class Elements { Typed, Variants };

// One-dimensional arrays with lower bound 0; Empty where there is no element.
Variant listValue(std::span<const std::string> texts, Elements elements);
Variant listValue(std::span<const std::int32_t> numbers, Elements elements);
Variant listValue(std::span<const std::int16_t> numbers, Elements elements);
// Rows from 0 with a single column; Empty where there is none.
Variant columnValue(std::span<const std::string> texts);
// Rows and columns from 0, each cell a VARIANT; Empty for no table.
Variant tableValue(const tool::RecordTable* table);

// Lists of one dimension, or arrays of a script; nothing gives an empty list. Raise Type mismatch (13) for
// values that are no arrays and elements of the wrong kind, Subscript out of range (9) for another rank,
// Overflow (6).
std::vector<std::string> textsOf(const VARIANT& value);
std::vector<std::int32_t> int32sOf(const VARIANT& value);
std::vector<std::int16_t> int16sOf(const VARIANT& value);
// The first column of an array of two dimensions; nothing gives an empty list. Raises as above.
std::vector<std::string> firstColumnOf(const VARIANT& value);
// The table over the array itself, which it keeps; an array that belongs to somebody else is copied. Nothing
// gives no table. Raises as above.
tool::RecordTablePtr tableOf(Variant value);

}  // namespace dravik::com
