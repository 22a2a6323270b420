#include "windows/com/ArrayView.h"

#include "windows/com/Boundary.h"

namespace dravik::com {
namespace {

// Bytes of an element, 0 for types that are no values.
std::size_t sizeOf(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            return 8;
        case VT_BSTR:
            return sizeof(BSTR);
        case VT_DECIMAL:
            return sizeof(DECIMAL);
        case VT_VARIANT:
            return sizeof(VARIANT);
        default:
            return 0;
    }
}

// The type of the elements as the array itself has it.
VARTYPE elementsIn(SAFEARRAY* array, VARTYPE label) {
    VARTYPE own = VT_EMPTY;
    if (SUCCEEDED(SafeArrayGetVartype(array, &own))) return own;
    // One that was put together by hand and says nothing holds no texts and no values.
    return label == VT_BSTR || label == VT_VARIANT ? VARTYPE{VT_EMPTY} : label;
}

bool isSameType(VARTYPE one, VARTYPE other) {
    const auto plain = [](VARTYPE type) {
        return type == VT_INT ? VT_I4 : type == VT_UINT ? VT_UI4 : static_cast<VARENUM>(type);
    };
    return plain(one) == plain(other);
}

}  // namespace

ArrayView::ArrayView(const VARIANT& value, UINT rank) {
    const VARIANT& inner = innermost(value);
    if (!(inner.vt & VT_ARRAY)) throw Failure(RuntimeError::TypeMismatch);
    array_ = inner.vt & VT_BYREF ? required(inner.pparray) : inner.parray;
    if (!array_ || SafeArrayGetDim(array_) != rank) throw Failure(RuntimeError::SubscriptOutOfRange);
    type_ = inner.vt & VT_TYPEMASK;
    elementSize_ = SafeArrayGetElemsize(array_);
    // A label that promises other elements than there are would lead outside the array, or take numbers for
    // the addresses of texts.
    if (sizeOf(type_) == 0 || elementSize_ != sizeOf(type_) || !isSameType(elementsIn(array_, type_), type_))
        throw Failure(RuntimeError::TypeMismatch);
    // Bounds are kept from the last dimension to the first.
    rows_ = array_->rgsabound[rank - 1].cElements;
    if (rank == 2) columns_ = array_->rgsabound[0].cElements;
    void* data = nullptr;
    check(SafeArrayAccessData(array_, &data));
    data_ = static_cast<std::byte*>(data);
}

ArrayView::~ArrayView() {
    if (data_) SafeArrayUnaccessData(array_);
}

VARIANT ArrayView::reference(std::size_t row, std::size_t column) const noexcept {
    VARIANT result;
    result.vt = static_cast<VARTYPE>(VT_BYREF | type_);
    // The first dimension varies fastest.
    result.byref = data_ + (column * rows_ + row) * elementSize_;
    return result;
}

tool::Cell ArrayView::cell(std::size_t row, std::size_t column) const {
    return cellOf(reference(row, column));
}

double ArrayView::number(std::size_t row, std::size_t column) const {
    const VARIANT element = reference(row, column);
    const VARIANT& value = innermost(element);
    if (value.vt == VT_R8) return value.dblVal;
    return tool::cellNumber(cellOf(value));
}

const void* ArrayView::elementsOf(VARTYPE type) const noexcept {
    return type == type_ && array_->cDims == 1 ? data_ : nullptr;
}

}  // namespace dravik::com
