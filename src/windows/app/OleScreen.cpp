#include "windows/app/OleScreen.h"

#include <atomic>
#include <utility>

#include "windows/com/Boundary.h"
#include "windows/com/ComText.h"

namespace dravik::app {

class OleScreen::Watcher final : public control::IScreenWatcher {
  public:
    explicit Watcher(OleScreen& screen) : screen_(&screen) {}
    void leave() noexcept { screen_ = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (iid != IID_IUnknown && iid != __uuidof(IScreenWatcher)) return E_NOINTERFACE;
        return com::handOut<control::IScreenWatcher>(this, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE ScreenChanged(LONG change) override {
        return com::comCall(__uuidof(IScreenWatcher), L"DravikTrainer", [&] {
            if (!screen_) return;
            switch (static_cast<control::ScreenChange>(change)) {
                case control::ScreenChange::Typed:
                    screen_->typedChanged();
                    break;
                case control::ScreenChange::Font:
                    screen_->fontChanged();
                    break;
                case control::ScreenChange::SavedState:
                    screen_->savedStateChanged();
                    break;
            }
        });
    }

  private:
    OleScreen* screen_;
    std::atomic<ULONG> references_ = 1;
};

OleScreen::OleScreen(ControlContainer& container)
    : container_(container),
      screen_(com::ComPtr<IUnknown>(container.control()).as<control::IWatchedScreen>()),
      watcher_(com::ComPtr<Watcher>::attach(new Watcher(*this))) {
    if (!screen_) throw com::failureOf(E_NOINTERFACE);
    com::check(screen_->Watch(watcher_.get()));
}

OleScreen::~OleScreen() {
    watcher_->leave();
    screen_->Watch(nullptr);
}

void OleScreen::setStep(tool::StepPtr step) {
    container_.setStep(step);
}

std::string OleScreen::typedText() const {
    com::Bstr text;
    VARIANT_BOOL maintains = VARIANT_FALSE;
    return SUCCEEDED(screen_->TypedText(text.put(), &maintains)) ? text.utf8() : std::string();
}

bool OleScreen::maintainsCase() const {
    com::Bstr text;
    VARIANT_BOOL maintains = VARIANT_FALSE;
    screen_->TypedText(text.put(), &maintains);
    return maintains != VARIANT_FALSE;
}

OleScreen::FontState OleScreen::fontState() const {
    com::Bstr name;
    VARIANT_BOOL changed = VARIANT_FALSE;
    VARIANT_BOOL training = VARIANT_FALSE;
    if (FAILED(screen_->FontState(name.put(), &changed, &training))) return {};
    return {name.utf8(), changed != VARIANT_FALSE, training != VARIANT_FALSE};
}

bool OleScreen::isTraining() const {
    return fontState().training;
}

std::string OleScreen::selectedFont() const {
    return fontState().name;
}

bool OleScreen::isFontChanged() const {
    return fontState().changed;
}

}  // namespace dravik::app
