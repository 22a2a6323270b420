#include "activex/host/ControlContainer.h"

#include <ocidl.h>

#include <atomic>
#include <utility>

#include <DravikDlgLib.h>

#include "activex/com/Boundary.h"
#include "activex/com/ComStep.h"
#include "activex/com/ComText.h"
#include "activex/com/Module.h"
#include "activex/control/ScreenWatch.h"

namespace dravik {
namespace {

constexpr wchar_t kNeighbour[] = L"DravikDlg.ocx";
constexpr int kHimetricPerInch = 2540;

// The class from the file beside the program, without the registry. The file stays loaded until the program
// ends.
ComPtr<IUnknown> neighbour() {
    const std::wstring program = modulePath();
    const std::wstring file = program.substr(0, program.find_last_of(L'\\') + 1) + kNeighbour;
    HMODULE library = LoadLibraryW(file.c_str());
    if (!library) throw Failure(RuntimeError::FileNotFound, toUtf8(file) + " cannot be loaded");
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClass = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
    if (!getClass) throw Failure(RuntimeError::FileNotFound, toUtf8(file) + " is not a control");
    ComPtr<IClassFactory> factory;
    check(getClass(CLSID_DravikDlg, IID_IClassFactory, factory.putVoid()));
    ComPtr<IUnknown> object;
    check(factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid()));
    return object;
}

ComPtr<IUnknown> makeControl() {
    ComPtr<IUnknown> object;
    const HRESULT made =
        CoCreateInstance(CLSID_DravikDlg, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid());
    if (SUCCEEDED(made) && object.as<IWatchedScreen>()) return object;
    return neighbour();
}

}  // namespace

class ControlContainer::Site final : public IOleClientSite,
                                     public IOleInPlaceSite,
                                     public IOleControlSite,
                                     public IOleInPlaceFrame,
                                     public IDispatch {
  public:
    Site(ControlContainer& container, HWND parent, const RECT& place)
        : place(place), container_(&container), parent_(parent) {}

    RECT place;
    ComPtr<IOleInPlaceActiveObject> active;

    void leave() noexcept {
        container_ = nullptr;
        active = nullptr;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (iid == IID_IUnknown || iid == IID_IOleClientSite) return handOut<IOleClientSite>(this, object);
        if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
            return handOut<IOleInPlaceSite>(this, object);
        if (iid == IID_IOleControlSite) return handOut<IOleControlSite>(this, object);
        if (iid == IID_IDispatch) return handOut<IDispatch>(this, object);
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
        if (moniker) *moniker = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        if (container) *container = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        if (!window) return E_POINTER;
        *window = parent_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return container_ ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                               LPRECT position, LPRECT clip,
                                               LPOLEINPLACEFRAMEINFO info) override {
        if (!frame || !document || !position || !clip || !info) return E_POINTER;
        *frame = this;
        AddRef();
        *document = nullptr;
        *position = *clip = place;
        info->fMDIApp = FALSE;
        info->hwndFrame = GetAncestor(parent_, GA_ROOT);
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** object) override {
        if (object) *object = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD) override {
        if (!message || !container_ || message->message != WM_KEYDOWN || message->wParam != VK_TAB)
            return S_FALSE;
        if (!container_->tabbedOut) return S_FALSE;
        container_->tabbedOut(GetKeyState(VK_SHIFT) < 0);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
        if (container_) active = object;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override {
        if (container_ && container_->modal) container_->modal(!enable);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    // The ambient properties. Font and colours are those of the system, which the control takes by itself.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if (!result) return E_POINTER;
        if (id != DISPID_AMBIENT_USERMODE && id != DISPID_AMBIENT_DISPLAYASDEFAULT)
            return DISP_E_MEMBERNOTFOUND;
        result->vt = VT_BOOL;
        result->boolVal = VARIANT_TRUE;
        return S_OK;
    }

  private:
    ControlContainer* container_;
    HWND parent_;
    std::atomic<ULONG> references_ = 1;
};

ControlContainer::ControlContainer(HWND parent, const RECT& place)
    : object_(makeControl()), site_(ComPtr<Site>::attach(new Site(*this, parent, place))) {
    const auto object = object_.as<IOleObject>();
    if (!object) throw failureOf(E_NOINTERFACE);
    check(object->SetClientSite(site_.get()));
    if (const auto fresh = object_.as<IPersistStreamInit>()) fresh->InitNew();
    const HRESULT shown = object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.get(), 0, parent, &place);
    if (FAILED(shown)) {
        close();
        check(shown);
    }
}

ControlContainer::~ControlContainer() {
    close();
}

IUnknown* ControlContainer::control() const noexcept {
    return object_.get();
}

HWND ControlContainer::window() const {
    HWND window = nullptr;
    if (const auto inPlace = object_.as<IOleInPlaceObject>()) inPlace->GetWindow(&window);
    return window;
}

void ControlContainer::setStep(const StepPtr& step) {
    const auto editor = object_.as<::StepEditor>();
    if (!editor) throw failureOf(E_NOINTERFACE);
    const auto object = comFromStep(step).as<IDispatch>();
    check(editor->putref_RootStep(object.get()), editor.get(), __uuidof(::StepEditor));
    check(editor->putref_Step(object.get()), editor.get(), __uuidof(::StepEditor));
}

void ControlContainer::setBounds(const RECT& place) {
    site_->place = place;
    if (const auto inPlace = object_.as<IOleInPlaceObject>()) inPlace->SetObjectRects(&place, &place);
}

SIZE ControlContainer::preferredSize() const {
    SIZEL extent{};
    const auto object = object_.as<IOleObject>();
    if (!object || FAILED(object->GetExtent(DVASPECT_CONTENT, &extent))) return {0, 0};
    const auto dpi = static_cast<int>(GetDpiForSystem());
    return {MulDiv(extent.cx, dpi, kHimetricPerInch), MulDiv(extent.cy, dpi, kHimetricPerInch)};
}

void ControlContainer::focus() {
    if (const auto object = object_.as<IOleObject>())
        object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, site_.get(), 0, GetParent(window()), &site_->place);
}

bool ControlContainer::translate(MSG& message) {
    if (!object_ || message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    const HWND own = window();
    const bool inside = own && (message.hwnd == own || IsChild(own, message.hwnd));
    if (inside && site_->active) {
        const ComPtr<IOleInPlaceActiveObject> active = site_->active;
        if (active->TranslateAccelerator(&message) == S_OK) return true;
    }
    // Access keys of the control work from everywhere in the window.
    if (message.message != WM_SYSCHAR || inside) return false;
    const auto control = object_.as<IOleControl>();
    CONTROLINFO info{};
    info.cb = sizeof info;
    WORD command = 0;
    if (!control || FAILED(control->GetControlInfo(&info)) || info.cAccel == 0 ||
        !IsAccelerator(info.hAccel, info.cAccel, &message, &command))
        return false;
    control->OnMnemonic(&message);
    return true;
}

void ControlContainer::ambientChanged() {
    if (const auto control = object_.as<IOleControl>()) control->OnAmbientPropertyChange(DISPID_UNKNOWN);
}

void ControlContainer::close() {
    const ComPtr<IUnknown> object = std::exchange(object_, nullptr);
    if (!object) return;
    if (const auto embedded = object.as<IOleObject>()) {
        embedded->Close(OLECLOSE_NOSAVE);
        embedded->SetClientSite(nullptr);
    }
    site_->leave();
}

}  // namespace dravik
