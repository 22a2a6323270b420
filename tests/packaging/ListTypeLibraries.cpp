// ListTypeLibraries FILE: prints what the type libraries of a DLL say, one line for each library, interface
// and method; the DLL may be of another architecture than the program.
#include <windows.h>
// Behind windows.h
#include <ole2.h>

#include <cstdio>
#include <string>

namespace {

void printMethods(ITypeInfo& info, UINT count) {
    for (UINT index = 0; index < count; ++index) {
        FUNCDESC* function = nullptr;
        if (FAILED(info.GetFuncDesc(index, &function))) continue;
        BSTR name = nullptr;
        info.GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr);
        if (!(function->wFuncFlags & FUNCFLAG_FRESTRICTED))
            std::printf("  %ls %08lX\n", name, static_cast<unsigned long>(function->memid));
        SysFreeString(name);
        info.ReleaseFuncDesc(function);
    }
}

void printLibrary(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    if (FAILED(library.GetLibAttr(&attributes))) return;
    BSTR name = nullptr, help = nullptr;
    library.GetDocumentation(-1, &name, &help, nullptr, nullptr);
    std::printf("%ls %s \"%ls\"\n", name, attributes->syskind == SYS_WIN64 ? "win64" : "win32", help);
    SysFreeString(name);
    SysFreeString(help);
    library.ReleaseTLibAttr(attributes);
    for (UINT index = 0; index < library.GetTypeInfoCount(); ++index) {
        ITypeInfo* info = nullptr;
        TYPEATTR* type = nullptr;
        if (FAILED(library.GetTypeInfo(index, &info))) continue;
        if (SUCCEEDED(info->GetTypeAttr(&type))) {
            BSTR typeName = nullptr;
            library.GetDocumentation(static_cast<INT>(index), &typeName, nullptr, nullptr, nullptr);
            std::printf(" %ls\n", typeName);
            SysFreeString(typeName);
            if (type->typekind == TKIND_DISPATCH) printMethods(*info, type->cFuncs);
            info->ReleaseTypeAttr(type);
        }
        info->Release();
    }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 2 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
    wchar_t path[MAX_PATH];
    GetFullPathNameW(arguments[1], MAX_PATH, path, nullptr);
    for (int resource = 1; resource <= 4; ++resource) {
        ITypeLib* library = nullptr;
        const HRESULT result =
            LoadTypeLibEx((path + (L"\\" + std::to_wstring(resource))).c_str(), REGKIND_NONE, &library);
        if (FAILED(result)) {
            std::printf("resource %d: 0x%08lX\n", resource, static_cast<unsigned long>(result));
            return 1;
        }
        printLibrary(*library);
        library->Release();
    }
    CoUninitialize();
    return 0;
}
