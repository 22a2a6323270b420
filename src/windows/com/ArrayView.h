// Reading an array that came through COM where it lies, whatever its lower bounds and its element type.
#pragma once

#include "windows/com/Variant.h"

namespace dravik::com {

class ArrayView {
  public:
    // Reads the array in a value, which stays where it is as long as the view and is locked by it. Raises
    // Type mismatch (13) when the value is no array, its elements are no values or others than it says,
    // Subscript out of range (9) when its rank is another.
    ArrayView(const VARIANT& value, UINT rank);
    ArrayView(const ArrayView&) = delete;
    ArrayView& operator=(const ArrayView&) = delete;
    ~ArrayView();

    // Elements of the first (rows) and the second dimension.
    std::size_t rows() const noexcept { return rows_; }
    std::size_t columns() const noexcept { return columns_; }

    // The element by its place from 0, which the caller has checked.
    tool::Cell cell(std::size_t row, std::size_t column = 0) const;
    double number(std::size_t row, std::size_t column = 0) const;

    // All elements in one piece when they are of that type and the array has one dimension; nothing
    // otherwise.
    const void* elementsOf(VARTYPE type) const noexcept;

  private:
    // The element as a value that refers to it.
    VARIANT reference(std::size_t row, std::size_t column) const noexcept;

    SAFEARRAY* array_ = nullptr;
    VARTYPE type_ = VT_EMPTY;
    std::byte* data_ = nullptr;
    std::size_t elementSize_ = 0;
    std::size_t rows_ = 0;
    std::size_t columns_ = 1;
};

}  // namespace dravik::com
