// IWatchedScreen of the control, over whatever screen it has at the time.
#pragma once

#include <memory>
#include <vector>

#include "trainer/HostedScreen.h"
#include "windows/com/ComPtr.h"
#include "windows/control/ControlState.h"
#include "windows/control/Facet.h"
#include "windows/control/ScreenWatch.h"

namespace dravik::control {

class WatchedScreen : public Facet<IWatchedScreen> {
  public:
    WatchedScreen(IUnknown& control, ControlState& state);

    HRESULT STDMETHODCALLTYPE TypedText(BSTR* text, VARIANT_BOOL* maintainsCase) override;
    HRESULT STDMETHODCALLTYPE FontState(BSTR* name, VARIANT_BOOL* changed, VARIANT_BOOL* training) override;
    HRESULT STDMETHODCALLTYPE Watch(IScreenWatcher* watcher) override;

  private:
    void look();
    void tell(ScreenChange change);

    ControlState& state_;
    com::ComPtr<IScreenWatcher> watcher_;
    std::unique_ptr<trainer::ScreenSight> sight_;
    std::vector<ui::Connection> connections_;
    ui::Connection renewed_;
};

}  // namespace dravik::control
