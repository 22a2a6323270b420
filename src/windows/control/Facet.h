// One interface of the control in a class of its own: its identity and its life are those of the control.
// Methods come in through entered(), so that no exception leaves and the control outlives the call whatever
// the host does meanwhile.
#pragma once

#include <new>
#include <utility>

#include "windows/control/ControlState.h"
#include "windows/win32/Entry.h"

namespace dravik::control {

template <class Interface>
class Facet : public Interface {
  public:
    explicit Facet(IUnknown& control) : control_(control) {}
    Facet(const Facet&) = delete;
    Facet& operator=(const Facet&) = delete;
    virtual ~Facet() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        return control_.QueryInterface(iid, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return control_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return control_.Release(); }

  protected:
    template <class Body>
    HRESULT entered(Body&& body) noexcept {
        const win32::Entry entry;
        IUnknown& control = control_;
        control.AddRef();
        HRESULT result = E_UNEXPECTED;
        try {
            result = std::forward<Body>(body)();
        } catch (const std::bad_alloc&) {
            result = E_OUTOFMEMORY;
        } catch (...) {
            result = E_UNEXPECTED;
        }
        control.Release();
        return result;
    }

    IUnknown& control_;
};

// One that works on what the interfaces share.
template <class Interface>
class StateFacet : public Facet<Interface> {
  public:
    StateFacet(IUnknown& control, ControlState& state) : Facet<Interface>(control), state_(state) {}

  protected:
    ControlState& state_;
};

}  // namespace dravik::control
