#include "windows/control/ControlState.h"

#include <utility>

#include "base/Failure.h"
#include "windows/win32/Dpi.h"

namespace dravik::control {
SIZE ControlState::extent() {
    if (hasExtent()) return extent_;
    // A widget has one view at a time, so that the page that is there must do.
    win32::FormPage* shown = activation.page();
    const SIZE pixels = shown ? shown->preferredSize() : UnseenPage(*this).page().preferredSize();
    const int dpi = shown ? shown->dpi() : win32::dpiOf(nullptr);
    extent_ = {extentOf(pixels.cx, dpi), extentOf(pixels.cy, dpi)};
    return extent_;
}

void ControlState::setExtent(SIZE hundredths) {
    if (hundredths.cx == extent_.cx && hundredths.cy == extent_.cy) return;
    extent_ = hundredths;
    dirty = true;
    viewChanged();
}

void ControlState::viewChanged() {
    if (!viewSink || !(viewAspects & DVASPECT_CONTENT)) return;
    const com::ComPtr<IAdviseSink> sink((viewFlags & ADVF_ONLYONCE) != 0 ? std::exchange(viewSink, nullptr)
                                                                         : viewSink);
    sink->OnViewChange(DVASPECT_CONTENT, -1);
}

UnseenPage::UnseenPage(ControlState& state)
    : parent_(CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0,
                              0, 0, 0, nullptr, nullptr, state.module, nullptr)) {
    if (!parent_) throw Failure(RuntimeError::OutOfMemory);
    page_ = std::make_unique<win32::FormPage>(state.screen.dialog().form(), parent_, state.screen.platform(),
                                              state.site.ambient());
    page_->setInert(true);
    page_->setVisible(true);
}

UnseenPage::~UnseenPage() {
    page_->detach();
    page_.reset();
    DestroyWindow(parent_);
}

}  // namespace dravik::control
