#include "windows/server/Server.h"

#include "windows/com/Boundary.h"
#include "windows/com/Module.h"
#include "windows/headers/ComObject.h"

namespace dravik::server {
namespace {

constexpr wchar_t kSource[] = L"DravikDlg";

class ClassFactory final : public ComObject<IClassFactory> {
  public:
    explicit ClassFactory(const RegisteredClass& made) : class_(made) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        return com::comCall(iid, kSource, [&] { return class_.create(iid, out); });
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        com::moduleObjects() += lock ? 1 : -1;
        return S_OK;
    }

  private:
    com::ModuleReference module_;
    const RegisteredClass& class_;
};

}  // namespace

HRESULT classObject(std::span<const RegisteredClass> classes, REFCLSID identifier, REFIID iid,
                    void** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;
    return com::comCall(iid, kSource, [&]() -> HRESULT {
        for (const RegisteredClass& one : classes) {
            if (one.identifier != identifier) continue;
            // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): comCall catches it
            const auto factory = com::ComPtr<IClassFactory>::attach(new ClassFactory(one));
            return factory->QueryInterface(iid, out);
        }
        return CLASS_E_CLASSNOTAVAILABLE;
    });
}

HRESULT canUnloadNow() noexcept {
    return com::moduleObjects() == 0 ? S_OK : S_FALSE;
}

}  // namespace dravik::server
