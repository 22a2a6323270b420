// What the control shows a program of this system that hosts it and works beside it: the typed text and the
// font's state, with word when they change. Private to the two; no type library describes it.
#pragma once

namespace dravik::control {

enum class ScreenChange : LONG { Typed = 1, Font = 2, SavedState = 3 };

MIDL_INTERFACE("0f4de5b2-6d4f-4f5c-9d0e-5a9c1b7e2f63")
IScreenWatcher : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE ScreenChanged(LONG change) = 0;
};

MIDL_INTERFACE("c2b0a5d4-77c1-4a5b-8b1e-3a6f0d94e7b8")
IWatchedScreen : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE TypedText(BSTR * text, VARIANT_BOOL * maintainsCase) = 0;
    // The name is "" while no font is loaded.
    virtual HRESULT STDMETHODCALLTYPE FontState(BSTR * name, VARIANT_BOOL * changed,
                                                VARIANT_BOOL * training) = 0;
    // One watcher at a time; null for none.
    virtual HRESULT STDMETHODCALLTYPE Watch(IScreenWatcher * watcher) = 0;
};

}  // namespace dravik::control

__CRT_UUID_DECL(dravik::control::IScreenWatcher, 0x0f4de5b2, 0x6d4f, 0x4f5c, 0x9d, 0x0e, 0x5a, 0x9c, 0x1b,
                0x7e, 0x2f, 0x63)
__CRT_UUID_DECL(dravik::control::IWatchedScreen, 0xc2b0a5d4, 0x77c1, 0x4a5b, 0x8b, 0x1e, 0x3a, 0x6f, 0x0d,
                0x94, 0xe7, 0xb8)
