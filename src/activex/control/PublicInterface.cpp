#include "activex/control/PublicInterface.h"

#include "activex/com/ComText.h"

namespace dravik {

HRESULT PublicInterface::DeleteSamplesByDistance(BSTR* Character, double* MinDistance, double* MaxDistance,
                                                 short* Count) {
    return entered([&]() -> HRESULT {
        if (Count) *Count = 0;
        if (!Character || !MinDistance || !MaxDistance || !Count) return E_POINTER;
        *Count =
            state_.screen.dialog().DeleteSamplesByDistance(toUtf8(*Character), *MinDistance, *MaxDistance);
        return S_OK;
    });
}

HRESULT PublicInterface::HighlightIncluded(BSTR* IncludedChars) {
    return entered([&]() -> HRESULT {
        if (!IncludedChars) return E_POINTER;
        state_.screen.dialog().HighlightIncluded(toUtf8(*IncludedChars));
        return S_OK;
    });
}

HRESULT PublicInterface::FontTrainDate(BSTR* Font, BSTR* Date) {
    return entered([&]() -> HRESULT {
        if (Date) *Date = nullptr;
        if (!Font || !Date) return E_POINTER;
        *Date = Bstr(state_.screen.dialog().FontTrainDate(toUtf8(*Font))).detach();
        return S_OK;
    });
}

}  // namespace dravik
