#include "windows/com/ToolValues.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <utility>

#include "base/Conversions.h"
#include "windows/com/ArrayView.h"
#include "windows/com/Boundary.h"
#include "windows/com/LateBound.h"

namespace dravik::com {
namespace {

// A new array whose bounds start at 0, rows first, and its elements.
struct NewArray {
    NewArray(VARTYPE type, std::size_t rows) : NewArray(type, rows, 1, 1) {}
    NewArray(VARTYPE type, std::size_t rows, std::size_t columns) : NewArray(type, rows, columns, 2) {}
    ~NewArray() {
        if (data) SafeArrayUnaccessData(value.get().parray);
    }
    NewArray(const NewArray&) = delete;
    NewArray& operator=(const NewArray&) = delete;

    template <typename T>
    T* as() const {
        return static_cast<T*>(data);
    }
    Variant take() {
        SafeArrayUnaccessData(value.get().parray);
        data = nullptr;
        return std::move(value);
    }

    Variant value;
    void* data = nullptr;

  private:
    NewArray(VARTYPE type, std::size_t rows, std::size_t columns, UINT rank) {
        if (rows > std::numeric_limits<ULONG>::max() || columns > std::numeric_limits<ULONG>::max())
            throw std::bad_alloc();
        std::array<SAFEARRAYBOUND, 2> bounds = {SAFEARRAYBOUND{static_cast<ULONG>(rows), 0},
                                                SAFEARRAYBOUND{static_cast<ULONG>(columns), 0}};
        SAFEARRAY* array = SafeArrayCreate(type, rank, bounds.data());
        if (!array) throw std::bad_alloc();
        value = Variant::ofArray(type, array);
        check(SafeArrayAccessData(array, &data));
    }
};

template <typename T>
Variant list(std::span<const T> numbers, VARTYPE type, Elements elements) {
    if (numbers.empty()) return {};
    NewArray array(elements == Elements::Typed ? type : static_cast<VARTYPE>(VT_VARIANT), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (elements == Elements::Typed)
            array.as<T>()[i] = numbers[i];
        else
            array.as<VARIANT>()[i] = Variant(numbers[i]).detach();
    }
    return array.take();
}

// Into a VARIANT that is still empty.
void putCell(VARIANT& out, const tool::Cell& cell) {
    if (const auto* number = std::get_if<double>(&cell)) {
        out.vt = VT_R8;
        out.dblVal = *number;
    } else if (const auto* text = std::get_if<std::string>(&cell)) {
        out.bstrVal = Bstr(std::string_view(*text)).detach();
        out.vt = VT_BSTR;
    }
}

// The elements of a list, each handed to `take`.
template <typename Take>
void eachOf(const VARIANT& value, Take take) {
    if (isNothing(value)) return;
    if (isObject(value)) {
        for (const Variant& element : elementsOf(objectOf(value).get())) take(cellOf(element.get()));
        return;
    }
    const ArrayView array(value, 1);
    for (std::size_t i = 0; i < array.rows(); ++i) take(array.cell(i));
}

// A script's array of rows as an array of two dimensions; Empty when it has no cell.
Variant arrayOfRows(const VARIANT& value) {
    std::vector<std::vector<Variant>> rows;
    std::size_t columns = 0;
    for (const Variant& row : elementsOf(objectOf(value).get())) {
        if (!isObject(row.get())) throw Failure(RuntimeError::SubscriptOutOfRange);
        const auto object = objectOf(row.get());
        rows.push_back(elementsOf(&required(object.get())));
        columns = std::max(columns, rows.back().size());
    }
    if (columns == 0) return {};
    NewArray array(VT_VARIANT, rows.size(), columns);
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; column < rows[row].size(); ++column)
            array.as<VARIANT>()[column * rows.size() + row] = rows[row][column].detach();
    return array.take();
}

// A record table over the array of a value that it keeps.
class ArrayTable : public tool::RecordTable {
  public:
    explicit ArrayTable(Variant value) : value_(std::move(value)), array_(value_.get(), 2) {
        constexpr auto most = static_cast<std::size_t>(std::numeric_limits<int>::max());
        if (array_.rows() > most || array_.columns() > most) throw Failure(RuntimeError::Overflow);
    }

    int upperRow() const noexcept override { return static_cast<int>(array_.rows()) - 1; }
    int upperColumn() const noexcept override { return static_cast<int>(array_.columns()) - 1; }
    tool::Cell cell(int row, int column) const override {
        checkPlace(row, column);
        return array_.cell(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
    }
    double number(int row, int column) const override {
        checkPlace(row, column);
        return array_.number(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
    }

  private:
    void checkPlace(int row, int column) const {
        if (row < 0 || row > upperRow() || column < 0 || column > upperColumn())
            throw Failure(RuntimeError::SubscriptOutOfRange);
    }

    Variant value_;
    ArrayView array_;  // goes before the value, which it locks
};

}  // namespace

Variant listValue(std::span<const std::string> texts, Elements elements) {
    if (texts.empty()) return {};
    NewArray array(elements == Elements::Typed ? VT_BSTR : VT_VARIANT, texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        Bstr text{std::string_view(texts[i])};
        if (elements == Elements::Typed)
            array.as<BSTR>()[i] = text.detach();
        else
            array.as<VARIANT>()[i] = Variant(std::move(text)).detach();
    }
    return array.take();
}

Variant listValue(std::span<const std::int32_t> numbers, Elements elements) {
    return list(numbers, VT_I4, elements);
}

Variant listValue(std::span<const std::int16_t> numbers, Elements elements) {
    return list(numbers, VT_I2, elements);
}

Variant columnValue(std::span<const std::string> texts) {
    if (texts.empty()) return {};
    NewArray array(VT_VARIANT, texts.size(), 1);
    for (std::size_t i = 0; i < texts.size(); ++i)
        array.as<VARIANT>()[i] = Variant(Bstr(std::string_view(texts[i]))).detach();
    return array.take();
}

Variant tableValue(const tool::RecordTable* table) {
    if (!table || table->isEmpty()) return {};
    const auto rows = static_cast<std::size_t>(table->upperRow()) + 1;
    const auto columns = static_cast<std::size_t>(table->upperColumn()) + 1;
    NewArray array(VT_VARIANT, rows, columns);
    auto* at = array.as<VARIANT>();
    for (int column = 0; column <= table->upperColumn(); ++column)
        for (int row = 0; row <= table->upperRow(); ++row) putCell(*at++, table->cell(row, column));
    return array.take();
}

std::vector<std::string> textsOf(const VARIANT& value) {
    std::vector<std::string> texts;
    eachOf(value, [&](const tool::Cell& cell) { texts.push_back(tool::cellText(cell)); });
    return texts;
}

std::vector<std::int32_t> int32sOf(const VARIANT& value) {
    std::vector<std::int32_t> numbers;
    eachOf(value, [&](const tool::Cell& cell) { numbers.push_back(toInt32(tool::cellNumber(cell))); });
    return numbers;
}

std::vector<std::int16_t> int16sOf(const VARIANT& value) {
    std::vector<std::int16_t> numbers;
    eachOf(value, [&](const tool::Cell& cell) { numbers.push_back(toInt16(tool::cellNumber(cell))); });
    return numbers;
}

std::vector<std::string> firstColumnOf(const VARIANT& value) {
    if (isNothing(value)) return {};
    if (isObject(value)) return firstColumnOf(arrayOfRows(value).get());
    const ArrayView array(value, 2);
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < array.rows(); ++row) texts.push_back(tool::cellText(array.cell(row, 0)));
    return texts;
}

tool::RecordTablePtr tableOf(Variant value) {
    if (isNothing(value.get())) return nullptr;
    if (isObject(value.get())) return tableOf(arrayOfRows(value.get()));
    if (value.get().vt & VT_BYREF) {
        Variant own;
        check(VariantCopyInd(own.put(), &value.get()));
        return tableOf(std::move(own));
    }
    return std::make_shared<ArrayTable>(std::move(value));
}

}  // namespace dravik::com
