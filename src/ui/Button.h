// The three kinds of buttons: push button, check box and option button.
#pragma once

#include <functional>
#include <string>

#include "ui/Widget.h"

namespace dravik::ui {

class Button : public Widget {
  public:
    Button(std::string name, std::string caption)
        : Widget(WidgetKind::Button, std::move(name), kButtonFaceColor, kButtonTextColor),
          caption_(std::move(caption)) {}

    const std::string& caption() const noexcept { return caption_; }
    void setCaption(std::string caption) { assign(caption_, std::move(caption), Change::Caption); }
    // A letter of a caption that does not mark one itself.
    void setAccessKey(char letter) { assign(accessKey_, letter, Change::Caption); }
    // The caption with "&" before the letter of the access key.
    std::string shownCaption() const {
        const std::size_t place = accessKey_ ? caption_.find(accessKey_) : std::string::npos;
        return place == std::string::npos ? caption_
                                          : caption_.substr(0, place) + "&" + caption_.substr(place);
    }

    // As if the operator pressed it: does nothing while it is disabled, or where mayPress says no.
    void press() {
        if (enabled() && (!mayPress || mayPress())) click();
    }
    // A program around the form may have something to ask first. One that is set is asked at each press.
    std::function<bool()> mayPress;

    Signal<> click;

  private:
    std::string caption_;
    char accessKey_ = 0;
};

class CheckBox : public Widget {
  public:
    CheckBox(std::string name, std::string caption)
        : Widget(WidgetKind::CheckBox, std::move(name), kButtonFaceColor, kButtonTextColor),
          caption_(std::move(caption)) {}

    const std::string& caption() const noexcept { return caption_; }
    const std::string& shownCaption() const noexcept { return caption_; }
    bool checked() const noexcept { return checked_; }
    // Fires click when the state differs, whether the operator or a procedure set it.
    void setChecked(bool checked) {
        if (assign(checked_, checked, Change::Value)) click();
    }

    Signal<> click;

  private:
    std::string caption_;
    bool checked_ = false;
};

// One of several choices. The form that owns a group releases the others when one is chosen.
class OptionButton : public Widget {
  public:
    OptionButton(std::string name, std::string caption)
        : Widget(WidgetKind::OptionButton, std::move(name), kButtonFaceColor, kButtonTextColor),
          caption_(std::move(caption)) {}

    const std::string& caption() const noexcept { return caption_; }
    const std::string& shownCaption() const noexcept { return caption_; }
    bool chosen() const noexcept { return chosen_; }
    // Choosing it fires click.
    void setChosen(bool chosen) {
        if (assign(chosen_, chosen, Change::Value) && chosen) click();
    }

    Signal<> click;

  private:
    std::string caption_;
    bool chosen_ = false;
};

}  // namespace dravik::ui
