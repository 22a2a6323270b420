#include "windows/control/PublicInterface.h"

#include "windows/com/ComText.h"

namespace dravik::control {

HRESULT PublicInterface::DeleteSamplesByDistance(BSTR* Character, double* MinDistance, double* MaxDistance,
                                                 short* Count) {
    return entered([&]() -> HRESULT {
        if (Count) *Count = 0;
        if (!Character || !MinDistance || !MaxDistance || !Count) return E_POINTER;
        *Count = state_.screen.dialog().DeleteSamplesByDistance(com::toUtf8(*Character), *MinDistance,
                                                                *MaxDistance);
        return S_OK;
    });
}

HRESULT PublicInterface::HighlightIncluded(BSTR* IncludedChars) {
    return entered([&]() -> HRESULT {
        if (!IncludedChars) return E_POINTER;
        state_.screen.dialog().HighlightIncluded(com::toUtf8(*IncludedChars));
        return S_OK;
    });
}

HRESULT PublicInterface::FontTrainDate(BSTR* Font, BSTR* Date) {
    return entered([&]() -> HRESULT {
        if (Date) *Date = nullptr;
        if (!Font || !Date) return E_POINTER;
        *Date = com::Bstr(state_.screen.dialog().FontTrainDate(com::toUtf8(*Font))).detach();
        return S_OK;
    });
}

}  // namespace dravik::control
