// The host's side of the control: the site it gave, what that site offers beside, and the ambient properties.
// Every part may be missing, and then has the answer that a plain dialog would give.
#pragma once

#include <string>

#include "windows/com/ComPtr.h"
#include "windows/win32/Ambient.h"

namespace dravik::control {

class HostSite {
  public:
    // Null for none.
    void set(IOleClientSite* site);

    IOleClientSite* client() const noexcept { return client_.get(); }
    IOleControlSite* control() const noexcept { return control_.get(); }
    com::ComPtr<IOleInPlaceSite> inPlace() const;

    // IQuickActivate hands the ambient properties over with the site; a null object changes nothing.
    void setAmbients(IDispatch* ambients);

    bool userMode() const;
    // The control may mark its default button; it is the host's while the focus is elsewhere.
    bool displayAsDefault() const;
    // The host does not want the control to answer the operator.
    bool uiDead() const;
    // Font and colours of the surroundings.
    win32::Ambient ambient() const;

    void showObject() const;
    void onFocus(bool gained) const;
    // The access keys are others than before.
    void controlInfoChanged() const;

  private:
    // VT_EMPTY when the host does not have it.
    VARIANT property(DISPID id, VARTYPE type) const;
    bool flag(DISPID id, bool otherwise) const;

    com::ComPtr<IOleClientSite> client_;
    com::ComPtr<IOleControlSite> control_;
    com::ComPtr<IDispatch> ambients_;
};

}  // namespace dravik::control
