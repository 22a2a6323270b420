#include "windows/win32/Accessible.h"

#include <cwchar>
#include <utility>

#include "windows/headers/ComObject.h"
#include "windows/win32/Guard.h"
#include "windows/win32/SystemFunction.h"

namespace dravik::win32 {
namespace {

// Of the annotation service, which the import libraries lack.
constexpr CLSID kAnnotationService = {
    0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr IID kAnnotations = {0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr GUID kNameProperty = {0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

BSTR text(const std::wstring& value) {
    return SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
}

class Accessible : public NotCalledByNames<ComObject<IAccessible, IDispatch>> {
  public:
    Accessible(HWND window, AccessibleContent& content, std::weak_ptr<void> owner)
        : window_(window), content_(content), owner_(std::move(owner)) {}

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
        if (!parent) return E_POINTER;
        *parent = nullptr;
        return with([&] {
            return accessibleObject(window_, OBJID_WINDOW, IID_IDispatch, reinterpret_cast<void**>(parent));
        });
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return with([&] {
            *count = content_.children();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        return of(child, [](LONG) { return S_FALSE; });  // parts have no object of their own
    }
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
        return textOf(child, name,
                      [&](LONG id) { return id == 0 ? content_.name() : content_.childName(id); });
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT, BSTR* value) override { return none(value); }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override {
        return textOf(child, description,
                      [&](LONG id) { return id == 0 ? content_.description() : std::wstring(); });
    }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
        return numberOf(child, role,
                        [&](LONG id) { return id == 0 ? content_.role() : content_.childRole(id); });
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
        return numberOf(child, state, [&](LONG id) {
            LONG bits = id == 0 ? content_.state() : content_.childState(id);
            if (!IsWindowVisible(window_)) bits |= STATE_SYSTEM_INVISIBLE;
            if (!IsWindowEnabled(window_)) bits |= STATE_SYSTEM_UNAVAILABLE;
            if (id == 0 && (GetWindowLongPtrW(window_, GWL_STYLE) & WS_TABSTOP))
                bits |= STATE_SYSTEM_FOCUSABLE;
            if (GetFocus() == window_ && id == content_.focusedChild()) bits |= STATE_SYSTEM_FOCUSED;
            return bits;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR* help) override { return none(help); }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT, LONG* topic) override {
        if (topic) *topic = 0;
        return none(file);
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT, BSTR* keys) override { return none(keys); }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* focused) override {
        if (!focused) return E_POINTER;
        VariantInit(focused);
        return with([&] {
            if (GetFocus() != window_) return S_FALSE;
            focused->vt = VT_I4;
            focused->lVal = content_.focusedChild();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* selection) override {
        if (!selection) return E_POINTER;
        VariantInit(selection);
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT, BSTR* action) override { return none(action); }
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override {
        return of(child, [&](LONG id) {
            if (!(flags & SELFLAG_TAKEFOCUS)) return S_OK;
            if (id == 0)
                SetFocus(window_);
            else
                content_.focusChild(id);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                          VARIANT child) override {
        if (!left || !top || !width || !height) return E_POINTER;
        return of(child, [&](LONG id) {
            RECT place{};
            if (id == 0)
                GetWindowRect(window_, &place);
            else {
                place = content_.childPlace(id);
                MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&place), 2);
            }
            *left = place.left;
            *top = place.top;
            *width = place.right - place.left;
            *height = place.bottom - place.top;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
        if (!end) return E_POINTER;
        VariantInit(end);
        return of(start, [&](LONG id) {
            LONG to = 0;
            if (id == 0 && direction == NAVDIR_FIRSTCHILD) to = 1;
            if (id == 0 && direction == NAVDIR_LASTCHILD) to = content_.children();
            if (id > 0 && (direction == NAVDIR_NEXT || direction == NAVDIR_RIGHT)) to = id + 1;
            if (id > 0 && (direction == NAVDIR_PREVIOUS || direction == NAVDIR_LEFT)) to = id - 1;
            if (to < 1 || to > content_.children()) return S_FALSE;
            end->vt = VT_I4;
            end->lVal = to;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* child) override {
        if (!child) return E_POINTER;
        VariantInit(child);
        return with([&] {
            RECT whole{};
            GetWindowRect(window_, &whole);
            if (!PtInRect(&whole, {x, y})) return S_FALSE;
            POINT place{x, y};
            ScreenToClient(window_, &place);
            child->vt = VT_I4;
            child->lVal = 0;
            for (int id = 1; id <= content_.children(); ++id) {
                const RECT part = content_.childPlace(id);
                const bool seen = (content_.childState(id) & STATE_SYSTEM_INVISIBLE) == 0;
                if (seen && PtInRect(&part, place)) child->lVal = id;
            }
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

  private:
    ~Accessible() override = default;

    template <class Body>
    HRESULT with(Body&& body) noexcept {
        const auto owner = owner_.lock();
        if (!owner || !IsWindow(window_)) return CO_E_OBJNOTCONNECTED;
        HRESULT result = E_FAIL;
        guarded([&] { result = body(); });
        return result;
    }
    template <class Body>
    HRESULT of(const VARIANT& child, Body&& body) noexcept {
        if (child.vt != VT_I4) return E_INVALIDARG;
        return with([&]() -> HRESULT {
            if (child.lVal < 0 || child.lVal > content_.children()) return E_INVALIDARG;
            return body(child.lVal);
        });
    }
    template <class Body>
    HRESULT textOf(const VARIANT& child, BSTR* result, Body&& body) noexcept {
        if (!result) return E_POINTER;
        *result = nullptr;
        return of(child, [&](LONG id) -> HRESULT {
            const std::wstring value = body(id);
            if (value.empty()) return S_FALSE;
            *result = text(value);
            return *result ? S_OK : E_OUTOFMEMORY;
        });
    }
    template <class Body>
    HRESULT numberOf(const VARIANT& child, VARIANT* result, Body&& body) noexcept {
        if (!result) return E_POINTER;
        VariantInit(result);
        return of(child, [&](LONG id) {
            result->vt = VT_I4;
            result->lVal = body(id);
            return S_OK;
        });
    }
    static HRESULT none(BSTR* value) noexcept {
        if (!value) return E_POINTER;
        *value = nullptr;
        return S_FALSE;
    }

    const HWND window_;
    AccessibleContent& content_;
    const std::weak_ptr<void> owner_;
};

}  // namespace

HRESULT accessibleObject(HWND window, LONG part, REFIID iid, void** object) {
    static const SystemFunction<decltype(&AccessibleObjectFromWindow)> find(L"oleacc.dll",
                                                                            "AccessibleObjectFromWindow");
    *object = nullptr;
    const HRESULT result = find(window, static_cast<DWORD>(part), iid, object);
    return SUCCEEDED(result) && !*object ? E_FAIL : result;
}

LRESULT accessibleAnswer(HWND window, AccessibleContent& content, std::weak_ptr<void> owner, WPARAM wParam) {
    auto* object = new Accessible(window, content, std::move(owner));
    static const SystemFunction<decltype(&LresultFromObject)> resultFromObject(L"oleacc.dll",
                                                                               "LresultFromObject");
    const LRESULT answer = resultFromObject(__uuidof(IAccessible), wParam, object);
    object->Release();
    return answer;
}

LRESULT accessibleClass(const wchar_t* systemClass) noexcept {
    constexpr LRESULT kFirst = 65536;
    constexpr std::pair<const wchar_t*, LRESULT> kNumbers[] = {
        {WC_LISTBOXW, 0},       {WC_BUTTONW, 2},         {WC_EDITW, 4},         {WC_COMBOBOXW, 5},
        {STATUSCLASSNAMEW, 11}, {TOOLBARCLASSNAMEW, 12}, {PROGRESS_CLASSW, 13}, {UPDOWN_CLASSW, 22}};
    for (const auto& [name, number] : kNumbers)
        if (std::wcscmp(name, systemClass) == 0) return kFirst + number;
    return 0;
}

void annotateName(HWND window, const std::wstring& name) noexcept {
    IAccPropServices* services = nullptr;
    const bool initialized = SUCCEEDED(CoInitialize(nullptr));
    if (SUCCEEDED(CoCreateInstance(kAnnotationService, nullptr, CLSCTX_INPROC_SERVER, kAnnotations,
                                   reinterpret_cast<void**>(&services))) &&
        services) {
        services->SetHwndPropStr(window, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, kNameProperty,
                                 name.c_str());
        services->Release();
    }
    if (initialized) CoUninitialize();
}

}  // namespace dravik::win32
