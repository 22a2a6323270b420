#include "windows/win32/Module.h"

namespace dravik::win32 {
namespace {

constexpr int kManifestResource = 2;

// Made once and kept: the windows that it was active for go on using it.
HANDLE activationContext() noexcept {
    static const HANDLE context = [] {
        ACTCTXW wanted{};
        wanted.cbSize = sizeof wanted;
        wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        wanted.hModule = moduleInstance();
        wanted.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
        return CreateActCtxW(&wanted);
    }();
    return context;
}

}  // namespace

HINSTANCE moduleInstance() noexcept {
    static const char here = 0;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&here), &module);
    return module;
}

Styles::Styles() noexcept {
    const HANDLE context = activationContext();
    active_ = context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie_);
}

Styles::~Styles() {
    if (active_) DeactivateActCtx(0, cookie_);
}

}  // namespace dravik::win32
