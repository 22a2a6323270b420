#include "windows/control/DocumentFacets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "windows/com/Variant.h"
#include "windows/win32/Dpi.h"

namespace dravik::control {
namespace {

constexpr std::int32_t kMark = 0x4B565244;  // "DRVK"
constexpr std::int32_t kVersion = 1;
constexpr LONG kLargestPicture = 8192;  // pixels
constexpr double kSameProportions = 0.02;
constexpr wchar_t kStreamName[] = L"Contents";
constexpr wchar_t kVersionProperty[] = L"_Version";
constexpr wchar_t kWidthProperty[] = L"_ExtentX";
constexpr wchar_t kHeightProperty[] = L"_ExtentY";

// In a stream and a storage: four 32-bit little-endian numbers, which are a mark, the version of the layout,
// width and height in hundredths of a millimetre. A damaged state is refused and changes nothing.
using State = std::array<std::int32_t, 4>;

bool isExtent(LONG width, LONG height) {
    return width > 0 && height > 0;
}

// 0 when the bag has no such number; a failure when it cannot be read.
HRESULT read(IPropertyBag& bag, const wchar_t* name, IErrorLog* log, LONG& number) {
    com::Variant value(std::int32_t{0});
    const HRESULT result = bag.Read(name, &value.get(), log);
    if (FAILED(result)) return result == E_INVALIDARG ? S_OK : result;
    if (SUCCEEDED(VariantChangeType(&value.get(), &value.get(), 0, VT_I4))) number = value.get().lVal;
    return S_OK;
}

HRESULT write(IPropertyBag& bag, const wchar_t* name, LONG number) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_I4;
    value.lVal = number;
    return bag.Write(name, &value);
}

HRESULT loadState(IStream& stream, ControlState& state) {
    State numbers{};
    ULONG read = 0;
    const HRESULT result = stream.Read(numbers.data(), sizeof numbers, &read);
    if (FAILED(result)) return result;
    if (read != sizeof numbers || numbers[0] != kMark || numbers[1] != kVersion) return STG_E_DOCFILECORRUPT;
    // A control that was saved before it ever had an extent holds zeros.
    const bool none = numbers[2] == 0 && numbers[3] == 0;
    if (!none && !isExtent(numbers[2], numbers[3])) return STG_E_DOCFILECORRUPT;
    if (!none) state.setExtent({numbers[2], numbers[3]});
    state.dirty = false;
    return S_OK;
}

HRESULT saveState(IStream& stream, ControlState& state, bool clearDirty) {
    const SIZE extent = state.extent();
    const State numbers{kMark, kVersion, static_cast<std::int32_t>(extent.cx),
                        static_cast<std::int32_t>(extent.cy)};
    ULONG written = 0;
    const HRESULT result = stream.Write(numbers.data(), sizeof numbers, &written);
    if (FAILED(result)) return result;
    if (written != sizeof numbers) return STG_E_MEDIUMFULL;
    if (clearDirty) state.dirty = false;
    return S_OK;
}

// Pixels that the screen is laid out in for a picture of it in `place`, in logical units: those of the extent
// when its proportions are the same, so that the picture is a scaled one; else the size asked for.
SIZE pictureSize(HDC target, const RECT& place, SIZE extent) {
    const int dpi = win32::dpiOf(nullptr);
    const auto limited = [](LONG x, LONG y) {
        return SIZE{std::clamp<LONG>(x, 1, kLargestPicture), std::clamp<LONG>(y, 1, kLargestPicture)};
    };
    const SIZE own = limited(pixelsOf(extent.cx, dpi), pixelsOf(extent.cy, dpi));
    std::array<POINT, 2> corners{POINT{place.left, place.top}, POINT{place.right, place.bottom}};
    // An old metafile's units are of no size.
    if (GetObjectType(target) == OBJ_METADC || !LPtoDP(target, corners.data(), 2)) return own;
    const SIZE asked = limited(
        MulDiv(std::abs(corners[1].x - corners[0].x), dpi, std::max(1, GetDeviceCaps(target, LOGPIXELSX))),
        MulDiv(std::abs(corners[1].y - corners[0].y), dpi, std::max(1, GetDeviceCaps(target, LOGPIXELSY))));
    const double proportions = double(own.cx) * asked.cy / (double(own.cy) * asked.cx);
    return std::abs(proportions - 1) < kSameProportions ? own : asked;
}

}  // namespace

HRESULT PersistStreamInit::Load(LPSTREAM stream) {
    return entered([&] { return stream ? loadState(*stream, state_) : E_POINTER; });
}

HRESULT PersistStreamInit::Save(LPSTREAM stream, BOOL clearDirty) {
    return entered([&] { return stream ? saveState(*stream, state_, clearDirty != FALSE) : E_POINTER; });
}

HRESULT PersistStreamInit::GetSizeMax(ULARGE_INTEGER* size) {
    if (!size) return E_POINTER;
    size->QuadPart = sizeof(State);
    return S_OK;
}

HRESULT PersistStorage::InitNew(IStorage* storage) {
    return storage ? S_OK : E_POINTER;
}

HRESULT PersistStorage::Load(IStorage* storage) {
    return entered([&]() -> HRESULT {
        if (!storage) return E_POINTER;
        com::ComPtr<IStream> stream;
        const HRESULT opened =
            storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.put());
        return FAILED(opened) ? opened : loadState(*stream, state_);
    });
}

HRESULT PersistStorage::Save(IStorage* storage, BOOL sameAsLoad) {
    return entered([&]() -> HRESULT {
        if (!storage) return E_POINTER;
        if (saving_) return E_UNEXPECTED;
        com::ComPtr<IStream> stream;
        HRESULT result = storage->CreateStream(kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE,
                                               0, 0, stream.put());
        if (SUCCEEDED(result)) result = saveState(*stream, state_, sameAsLoad != FALSE);
        if (SUCCEEDED(result)) saving_ = true;
        return result;
    });
}

HRESULT PersistStorage::SaveCompleted(IStorage*) {
    saving_ = false;
    state_.dirty = false;
    return S_OK;
}

HRESULT PersistPropertyBag::Load(IPropertyBag* bag, IErrorLog* log) {
    return entered([&]() -> HRESULT {
        if (!bag) return E_POINTER;
        SIZE extent{0, 0};
        HRESULT result = read(*bag, kWidthProperty, log, extent.cx);
        if (SUCCEEDED(result)) result = read(*bag, kHeightProperty, log, extent.cy);
        if (FAILED(result)) return result;
        if (isExtent(extent.cx, extent.cy)) state_.setExtent(extent);
        state_.dirty = false;
        return S_OK;
    });
}

HRESULT PersistPropertyBag::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    return entered([&]() -> HRESULT {
        if (!bag) return E_POINTER;
        const SIZE extent = state_.extent();
        HRESULT result = write(*bag, kVersionProperty, kVersion);
        if (SUCCEEDED(result)) result = write(*bag, kWidthProperty, extent.cx);
        if (SUCCEEDED(result)) result = write(*bag, kHeightProperty, extent.cy);
        if (SUCCEEDED(result) && clearDirty) state_.dirty = false;
        return result;
    });
}

HRESULT ViewObject::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC target, LPCRECTL bounds,
                         LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    return entered([&]() -> HRESULT {
        if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        if (!target || !bounds) return E_INVALIDARG;
        const RECT place{bounds->left, bounds->top, bounds->right, bounds->bottom};
        if (win32::FormPage* page = state_.activation.page()) {
            page->draw(target, place);
        } else {
            const SIZE size = pictureSize(target, place, state_.extent());
            UnseenPage unseen(state_);
            unseen.page().setBounds({0, 0, size.cx, size.cy});
            unseen.page().draw(target, place);
        }
        return S_OK;
    });
}

HRESULT ViewObject::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) {
    if (!colors) return E_POINTER;
    *colors = nullptr;
    return S_FALSE;
}

HRESULT ViewObject::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return entered([&] {
        state_.viewSink = sink;
        state_.viewAspects = aspects;
        state_.viewFlags = flags;
        if ((flags & ADVF_PRIMEFIRST) != 0) state_.viewChanged();
        return S_OK;
    });
}

HRESULT ViewObject::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects) *aspects = state_.viewAspects;
    if (flags) *flags = state_.viewFlags;
    if (sink) {
        *sink = state_.viewSink.get();
        if (*sink) (*sink)->AddRef();
    }
    return S_OK;
}

HRESULT ViewObject::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, SIZEL* extent) {
    return entered([&]() -> HRESULT {
        if (!extent) return E_POINTER;
        if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
        *extent = state_.extent();
        return S_OK;
    });
}

}  // namespace dravik::control
