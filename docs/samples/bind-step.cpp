// bind-step PROGID : creates the control and gives it the step of that program identifier, as a job editor
// does before it shows the control in a window of its own. Build it with the headers of the contract folder:
//   x86_64-w64-mingw32-g++ -municode -I contract bind-step.cpp -lole32 -loleaut32 -luuid
#include <windows.h>
// Behind windows.h
#include <ole2.h>

#include <cstdio>

#include "DravikDlgLib.h"
#include "TollanLib.h"

// What the control, or any object that says so, left about its last failure.
static void printError(IUnknown* object, REFIID iid, HRESULT code) {
    BSTR source = nullptr, description = nullptr;
    ISupportErrorInfo* supports = nullptr;
    IErrorInfo* info = nullptr;
    if (SUCCEEDED(object->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&supports)))) {
        if (supports->InterfaceSupportsErrorInfo(iid) == S_OK && GetErrorInfo(0, &info) == S_OK) {
            info->GetSource(&source);
            info->GetDescription(&description);
            info->Release();
        }
        supports->Release();
    }
    std::printf("0x%08lX %ls: %ls\n", static_cast<unsigned long>(code), source ? source : L"",
                description ? description : L"");
    SysFreeString(source);
    SysFreeString(description);
}

static IUnknown* create(const wchar_t* programIdentifier) {
    CLSID identifier;
    IUnknown* object = nullptr;
    if (FAILED(CLSIDFromProgID(programIdentifier, &identifier)) ||
        FAILED(CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                reinterpret_cast<void**>(&object))))
        std::printf("%ls cannot be created\n", programIdentifier);
    return object;
}

static int bind(IUnknown* control, IDispatch* step) {
    StepEditor* editor = nullptr;
    if (FAILED(control->QueryInterface(__uuidof(StepEditor), reinterpret_cast<void**>(&editor)))) return 1;
    editor->put_ReadOnly(VARIANT_FALSE);
    editor->putref_RootStep(step);
    const HRESULT bound = editor->putref_Step(step);
    // What is no step at all is told to the operator alone, in the status bar.
    IDispatch* now = nullptr;
    editor->get_Step(&now);
    if (FAILED(bound))
        printError(editor, __uuidof(StepEditor), bound);
    else
        std::printf(now == step ? "bound\n" : "not bound: it is no step\n");
    const bool isBound = now == step;
    if (now) now->Release();
    editor->Release();
    return isBound ? 0 : 1;
}

int wmain(int count, wchar_t** arguments) {
    if (count != 2 || FAILED(OleInitialize(nullptr))) return 2;
    int result = 2;
    IUnknown* control = create(L"DravikDlgLib.DravikDlg");
    IUnknown* object = create(arguments[1]);
    IDispatch* step = nullptr;
    if (control && object &&
        SUCCEEDED(object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&step))))
        result = bind(control, step);
    if (step) step->Release();
    if (object) object->Release();
    if (control) control->Release();
    OleUninitialize();
    return result;
}
