// show-control PROGID [--seconds N] : a window with the control and a button of its own, which gives the
// control the step of that program identifier. It is a whole container: what a job editor has to answer the
// control, and to tell it, stands here once. With --seconds it closes by itself, as a check that the control
// can be shown. Ends with 0 when the control was shown, with 1 when it was not, with 2 when the command line
// is wrong. Build it with the headers of the contract folder:
//   x86_64-w64-mingw32-g++ -municode -I contract show-control.cpp -lole32 -loleaut32 -luuid
#include <windows.h>
// Behind windows.h
#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>
#include <wrl/client.h>

#include <cstdio>
#include <cwchar>
#include <utility>

#include "DravikDlgLib.h"
#include "TollanLib.h"

using Microsoft::WRL::ComPtr;

static const int kButtonHeight = 32;

// The site that the control speaks to, the frame around it and the ambient properties, in one object.
class Container : public IOleClientSite,
                  public IOleInPlaceSite,
                  public IOleInPlaceFrame,
                  public IOleControlSite,
                  public IDispatch {
  public:
    // The window's own button, which has the focus when the control has not.
    Container(HWND window, HWND button) : window_(window), button_(button) {}

    // Gives the control its site and activates it in place, without the focus.
    bool show(const ComPtr<IUnknown>& control) {
        if (FAILED(control.As(&object_)) || FAILED(object_->SetClientSite(this))) return false;
        // A new control; one that was stored in a document gets IPersistStreamInit::Load instead.
        ComPtr<IPersistStreamInit> fresh;
        if (SUCCEEDED(control.As(&fresh))) fresh->InitNew();
        const RECT place = controlPlace();
        return SUCCEEDED(object_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, this, 0, window_, &place)) &&
               SUCCEEDED(control.As(&inPlace_));
    }

    HWND controlWindow() const {
        HWND window = nullptr;
        if (inPlace_) inPlace_->GetWindow(&window);
        return window;
    }

    // Whether the control was visible, active and as large as its place when it was closed.
    bool wasShown() const { return wasShown_; }

    // The window has another size.
    void arrange() {
        const RECT place = controlPlace();
        MoveWindow(button_, 0, place.bottom, 120, kButtonHeight, TRUE);
        // The second rectangle is what of the first may be seen; here all of it.
        if (inPlace_) inPlace_->SetObjectRects(&place, &place);
    }

    // The focus goes into the control: with a Tab to the first field, or to the last one by Shift, else to
    // the one that had it last.
    void focusControl(MSG* tab = nullptr) {
        const RECT place = controlPlace();
        if (object_) object_->DoVerb(OLEIVERB_UIACTIVATE, tab, this, 0, window_, &place);
    }

    // Another window comes to the front, and this one again.
    void keepFocus() { buttonHadFocus_ = GetFocus() == button_; }
    void giveFocusBack() {
        if (buttonHadFocus_)
            SetFocus(button_);
        else
            focusControl();
    }

    // A message of the loop, before it is dispatched; true when it is used up.
    bool translate(MSG* message) {
        if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST || !object_) return false;
        const bool inside = IsChild(controlWindow(), message->hwnd);
        // While the control has the focus every key is its own first. A Tab that leaves it comes back through
        // IOleControlSite::TranslateAccelerator.
        const ComPtr<IOleInPlaceActiveObject> active = active_;
        if (inside && active && active->TranslateAccelerator(message) == S_OK) return true;
        if (message->hwnd == button_ && message->message == WM_KEYDOWN && message->wParam == VK_TAB) {
            focusControl(message);
            return true;
        }
        // Alt and a letter work from the button, too.
        ComPtr<IOleControl> control;
        if (inside || message->message != WM_SYSCHAR || FAILED(object_.As(&control))) return false;
        CONTROLINFO info = {};
        info.cb = sizeof info;
        WORD command;
        if (FAILED(control->GetControlInfo(&info)) || info.cAccel == 0 ||
            !IsAccelerator(info.hAccel, info.cAccel, message, &command))
            return false;
        control->OnMnemonic(message);
        return true;
    }

    // The system's colours or fonts changed: the ambient properties did, and what the control draws with.
    void systemChanged(UINT message, WPARAM wParam, LPARAM lParam) {
        ComPtr<IOleControl> control;
        if (SUCCEEDED(object_.As(&control))) control->OnAmbientPropertyChange(DISPID_UNKNOWN);
        if (controlWindow()) SendMessageW(controlWindow(), message, wParam, lParam);
    }

    // The control may ask "Save changes?" here, so the window is still there.
    void close() {
        const ComPtr<IOleObject> object = std::exchange(object_, nullptr);
        if (!object) return;
        RECT client = {};
        GetClientRect(controlWindow(), &client);
        const RECT place = controlPlace();
        wasShown_ = active_ && IsWindowVisible(controlWindow()) && EqualRect(&client, &place);
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
        inPlace_ = nullptr;
    }

    // IUnknown. The container outlives what it shows; nobody deletes it by the count.
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid == IID_IUnknown || iid == IID_IOleClientSite) *object = static_cast<IOleClientSite*>(this);
        if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
            *object = static_cast<IOleInPlaceSite*>(this);
        if (iid == IID_IOleControlSite) *object = static_cast<IOleControlSite*>(this);
        if (iid == IID_IDispatch) *object = static_cast<IDispatch*>(this);
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override { return --references_; }

    // IOleWindow, of site and frame alike.
    STDMETHODIMP GetWindow(HWND* window) override {
        *window = window_;
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    // IOleClientSite: there is no document around the control.
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
        return *moniker = nullptr, E_NOTIMPL;
    }
    STDMETHODIMP GetContainer(IOleContainer** container) override {
        return *container = nullptr, E_NOINTERFACE;
    }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleInPlaceSite: the steps of activation, in this order.
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
        *frame = this;
        AddRef();
        *document = nullptr;
        *place = *clip = controlPlace();
        info->fMDIApp = FALSE;
        info->hwndFrame = window_;
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return S_OK;
    }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; }

    // IOleControlSite: a key that leaves the control, which is Tab at the end of its own order.
    STDMETHODIMP TranslateAccelerator(MSG* message, DWORD) override {
        if (message->message != WM_KEYDOWN || message->wParam != VK_TAB) return S_FALSE;
        SetFocus(button_);
        return S_OK;
    }
    STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch** object) override { return *object = nullptr, E_NOTIMPL; }
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP OnFocus(BOOL) override { return S_OK; }
    STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

    // IOleInPlaceFrame: the frame has no tools and no menus to share, and keeps whom keys go to.
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
        active_ = object;
        return S_OK;
    }
    STDMETHODIMP EnableModeless(BOOL enable) override {  // the control opens or closes a box or a form
        EnableWindow(button_, enable);
        return S_OK;
    }
    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    // IDispatch: the ambient properties. Font and colours, if not answered, the control takes from the
    // system.
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (id != DISPID_AMBIENT_USERMODE && id != DISPID_AMBIENT_DISPLAYASDEFAULT)
            return DISP_E_MEMBERNOTFOUND;
        result->vt = VT_BOOL;
        // A form designer says no to the first. Outside of the control Enter is the button's.
        result->boolVal = id == DISPID_AMBIENT_USERMODE ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }

  private:
    RECT controlPlace() const {
        RECT client;
        GetClientRect(window_, &client);
        return {0, 0, client.right, client.bottom > kButtonHeight ? client.bottom - kButtonHeight : 0};
    }

    HWND window_;
    HWND button_;
    bool buttonHadFocus_ = false;
    ComPtr<IOleObject> object_;
    ComPtr<IOleInPlaceObject> inPlace_;
    ComPtr<IOleInPlaceActiveObject> active_;
    bool wasShown_ = false;
    ULONG references_ = 1;
};

static Container* container;  // of the window, while it is there

static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (container ? message : WM_NULL) {
        case WM_SIZE:
            container->arrange();
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) container->keepFocus();
            break;
        case WM_SETFOCUS:
            container->giveFocusBack();
            return 0;
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
            container->systemChanged(message, wParam, lParam);
            return 0;
        case WM_TIMER:
            KillTimer(window, wParam);  // the control may ask something as it closes
            [[fallthrough]];
        case WM_COMMAND:  // the button
            SendMessageW(window, WM_CLOSE, 0, 0);
            return 0;
        case WM_CLOSE:
            container->close();
            DestroyWindow(window);
            return 0;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

static ComPtr<IUnknown> create(const wchar_t* programIdentifier) {
    CLSID identifier;
    ComPtr<IUnknown> object;
    if (FAILED(CLSIDFromProgID(programIdentifier, &identifier)) ||
        FAILED(CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object))))
        std::printf("%ls cannot be created\n", programIdentifier);
    return object;
}

// As in bind-step.cpp, which also says why a step is refused.
static bool bind(const ComPtr<IUnknown>& control, const ComPtr<IUnknown>& tool) {
    ComPtr<StepEditor> editor;
    ComPtr<IDispatch> step, bound;
    return SUCCEEDED(control.As(&editor)) && SUCCEEDED(tool.As(&step)) &&
           SUCCEEDED(editor->put_ReadOnly(VARIANT_FALSE)) && SUCCEEDED(editor->putref_RootStep(step.Get())) &&
           SUCCEEDED(editor->putref_Step(step.Get())) && SUCCEEDED(editor->get_Step(&bound)) &&
           bound.Get() == step.Get();
}

// Runs the window until it is closed, by its button or after so many seconds (0: not by itself). True when
// the control was shown with the step.
static bool run(const ComPtr<IUnknown>& control, const ComPtr<IUnknown>& tool, int seconds) {
    WNDCLASSW kind = {};
    kind.lpfnWndProc = answer;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.hCursor = LoadCursor(nullptr, IDC_ARROW);
    kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    kind.lpszClassName = L"ShowControl";
    RegisterClassW(&kind);
    HWND window =
        CreateWindowW(kind.lpszClassName, L"Dravik", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                      CW_USEDEFAULT, 800, 900, nullptr, nullptr, kind.hInstance, nullptr);
    HWND button = CreateWindowW(L"BUTTON", L"Close", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 0, window,
                                nullptr, kind.hInstance, nullptr);
    Container site(window, button);
    container = &site;
    const bool shown = site.show(control) && bind(control, tool);
    if (!shown) {
        std::printf("The control cannot be shown with that step\n");
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
    ShowWindow(window, SW_SHOW);
    site.focusControl();
    if (seconds > 0) SetTimer(window, 1, static_cast<UINT>(seconds) * 1000, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (site.translate(&message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    container = nullptr;
    return shown && site.wasShown();
}

int wmain(int count, wchar_t** arguments) {
    const bool closes = count == 4 && std::wcscmp(arguments[2], L"--seconds") == 0;
    const int seconds = closes ? static_cast<int>(std::wcstol(arguments[3], nullptr, 10)) : 0;
    if ((count != 2 && !closes) || seconds < 0) return 2;
    SetProcessDPIAware();
    if (FAILED(OleInitialize(nullptr))) return 1;
    bool shown = false;
    {
        const ComPtr<IUnknown> control = create(L"DravikDlgLib.DravikDlg");
        const ComPtr<IUnknown> tool = create(arguments[1]);
        shown = control && tool && run(control, tool, seconds);
    }
    OleUninitialize();
    return shown ? 0 : 1;
}
