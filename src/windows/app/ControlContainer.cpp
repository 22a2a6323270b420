#include "windows/app/ControlContainer.h"

#include <utility>

#include <DravikDlgLib.h>

#include "windows/app/ContainerSite.h"
#include "windows/com/Boundary.h"
#include "windows/com/ComStep.h"
#include "windows/com/ComText.h"
#include "windows/com/Module.h"
#include "windows/control/ScreenWatch.h"

namespace dravik::app {
namespace {

constexpr wchar_t kNeighbour[] = L"DravikDlg.ocx";
constexpr int kHimetricPerInch = 2540;

// The class from the file beside the program, without the registry. The file stays loaded until the program
// ends.
com::ComPtr<IUnknown> neighbour() {
    const std::wstring program = com::modulePath();
    const std::wstring file = program.substr(0, program.find_last_of(L'\\') + 1) + kNeighbour;
    HMODULE library = LoadLibraryW(file.c_str());
    if (!library) throw Failure(RuntimeError::FileNotFound, utf8(file) + " cannot be loaded");
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClass = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
    if (!getClass) throw Failure(RuntimeError::FileNotFound, utf8(file) + " is not a control");
    com::ComPtr<IClassFactory> factory;
    com::check(getClass(CLSID_DravikDlg, IID_IClassFactory, factory.putVoid()));
    com::ComPtr<IUnknown> object;
    com::check(factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid()));
    return object;
}

com::ComPtr<IUnknown> makeControl() {
    com::ComPtr<IUnknown> object;
    const HRESULT made =
        CoCreateInstance(CLSID_DravikDlg, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.putVoid());
    if (SUCCEEDED(made) && object.as<control::IWatchedScreen>()) return object;
    return neighbour();
}

}  // namespace

class ControlContainer::Site final : public ContainerSite {
  public:
    Site(ControlContainer& container, HWND parent, const RECT& place)
        : ContainerSite(parent, place), container_(&container) {}

    void leave() noexcept {
        container_ = nullptr;
        active = nullptr;
    }

    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return container_ ? S_OK : S_FALSE; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD) override {
        if (!message || !container_ || message->message != WM_KEYDOWN || message->wParam != VK_TAB)
            return S_FALSE;
        if (!container_->tabbedOut) return S_FALSE;
        container_->tabbedOut(GetKeyState(VK_SHIFT) < 0);
        return S_OK;
    }
    using ContainerSite::TranslateAccelerator;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override {
        return container_ ? ContainerSite::SetActiveObject(object, name) : S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override {
        if (container_ && container_->modal) container_->modal(!enable);
        return S_OK;
    }
    // Font and colours are those of the system, which the control takes by itself.
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
};

ControlContainer::ControlContainer(HWND parent, const RECT& place)
    : object_(makeControl()), site_(com::ComPtr<Site>::attach(new Site(*this, parent, place))) {
    const auto object = object_.as<IOleObject>();
    if (!object) throw com::failureOf(E_NOINTERFACE);
    com::check(object->SetClientSite(site_.get()));
    if (const auto fresh = object_.as<IPersistStreamInit>()) fresh->InitNew();
    const HRESULT shown = object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.get(), 0, parent, &place);
    if (FAILED(shown)) {
        close();
        com::check(shown);
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

void ControlContainer::setStep(const tool::StepPtr& step) {
    const auto editor = object_.as<::StepEditor>();
    if (!editor) throw com::failureOf(E_NOINTERFACE);
    const auto object = com::comFromStep(step).as<IDispatch>();
    com::check(editor->putref_RootStep(object.get()), editor.get(), __uuidof(::StepEditor));
    com::check(editor->putref_Step(object.get()), editor.get(), __uuidof(::StepEditor));
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
    if (!object_) return false;
    const HWND own = window();
    const bool inside = own && (message.hwnd == own || IsChild(own, message.hwnd));
    // Access keys of the control work from everywhere in the window.
    return giveKey(message, *object_, *site_, inside, !inside);
}

void ControlContainer::ambientChanged() {
    if (const auto control = object_.as<IOleControl>()) control->OnAmbientPropertyChange(DISPID_UNKNOWN);
    if (const HWND shown = window()) SendMessageW(shown, WM_SYSCOLORCHANGE, 0, 0);
}

void ControlContainer::close() {
    const com::ComPtr<IUnknown> object = std::exchange(object_, nullptr);
    if (!object) return;
    if (const auto embedded = object.as<IOleObject>()) {
        embedded->Close(OLECLOSE_NOSAVE);
        embedded->SetClientSite(nullptr);
    }
    site_->leave();
}

}  // namespace dravik::app
