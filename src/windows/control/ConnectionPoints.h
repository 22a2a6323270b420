// The control's two connection points: its event interface, which has no events, and changes of properties,
// which it never reports as it has none. Hosts connect to both as a matter of course.
#pragma once

#include <map>

#include "windows/com/ComPtr.h"
#include "windows/control/Facet.h"

namespace dravik::control {

class ConnectionPoint : public Facet<IConnectionPoint> {
  public:
    // The point lives as long as the control and is a part of it, with an identity of its own.
    ConnectionPoint(IUnknown& control, IConnectionPointContainer& container, REFIID outgoing)
        : Facet(control), container_(container), outgoing_(outgoing) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

    const IID& outgoing() const noexcept { return outgoing_; }

  private:
    IConnectionPointContainer& container_;
    const IID outgoing_;
    std::map<DWORD, com::ComPtr<IUnknown>> sinks_;
    DWORD last_ = 0;
};

class ConnectionPoints : public Facet<IConnectionPointContainer> {
  public:
    explicit ConnectionPoints(IUnknown& control);

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

    ConnectionPoint& events() noexcept { return events_; }
    ConnectionPoint& propertyChanges() noexcept { return propertyChanges_; }

  private:
    ConnectionPoint events_;
    ConnectionPoint propertyChanges_;
};

}  // namespace dravik::control
