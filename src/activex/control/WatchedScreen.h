// IWatchedScreen of the control, over whatever screen it has at the time.
#pragma once

#include <memory>
#include <vector>

#include "activex/com/ComPtr.h"
#include "activex/control/ControlState.h"
#include "activex/control/Facet.h"
#include "activex/control/ScreenWatch.h"
#include "trainer/HostedScreen.h"

namespace dravik {

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
    ComPtr<IScreenWatcher> watcher_;
    std::unique_ptr<ScreenSight> sight_;
    std::vector<Connection> connections_;
    Connection renewed_;
};

}  // namespace dravik
