#include "windows/control/OleControl.h"

#include <cwctype>
#include <vector>

namespace dravik::control {

OleControl::~OleControl() {
    if (accelerators_) DestroyAcceleratorTable(accelerators_);
}

HRESULT OleControl::GetControlInfo(CONTROLINFO* info) {
    return entered([&]() -> HRESULT {
        if (!info) return E_POINTER;
        if (accelerators_) DestroyAcceleratorTable(accelerators_);
        accelerators_ = nullptr;
        std::vector<ACCEL> keys;
        if (win32::FormPage* page = state_.activation.page())
            for (const wchar_t key : page->mnemonics()) {
                const auto lower = static_cast<WORD>(std::towlower(static_cast<wint_t>(key)));
                const auto upper = static_cast<WORD>(std::towupper(static_cast<wint_t>(key)));
                keys.push_back({FALT, lower, 0});
                if (upper != lower) keys.push_back({FALT, upper, 0});
            }
        if (!keys.empty())
            accelerators_ = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
        info->hAccel = accelerators_;
        info->cAccel = accelerators_ ? static_cast<USHORT>(keys.size()) : USHORT{0};
        const win32::FormPage* shown = state_.activation.page();
        info->dwFlags = shown && shown->answersEnter() ? CTRLINFO_EATS_RETURN : 0;
        return S_OK;
    });
}

HRESULT OleControl::OnMnemonic(MSG* message) {
    return entered([&]() -> HRESULT {
        if (!message) return E_POINTER;
        win32::FormPage* page = state_.activation.page();
        if (page && state_.site.userMode()) page->pressMnemonic(static_cast<wchar_t>(message->wParam));
        return S_OK;
    });
}

HRESULT OleControl::OnAmbientPropertyChange(DISPID) {
    return entered([&] {
        state_.activation.takeAmbients();
        return S_OK;
    });
}

// The control fires no events.
HRESULT OleControl::FreezeEvents(BOOL) {
    return S_OK;
}

}  // namespace dravik::control
