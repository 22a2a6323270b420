// Containers: the frame, a captioned group of controls, and the form, a window or an embedded page with its
// timers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/Button.h"
#include "ui/Layout.h"
#include "ui/Timer.h"
#include "ui/Widget.h"

namespace dravik::ui {

class Container : public Widget {
  public:
    const std::string& caption() const noexcept { return caption_; }
    void setCaption(std::string caption) { assign(caption_, std::move(caption), Change::Caption); }

    // Set once, while the form is put together, before a backend shows it.
    const Layout& layout() const noexcept { return layout_; }
    void setLayout(Layout layout) { layout_ = std::move(layout); }

    // The widget of that name in this container or one inside it; nothing when there is none. Of a control
    // array it is the first element.
    Widget* find(std::string_view name) const;

  protected:
    Container(WidgetKind kind, std::string name, std::string caption);

  private:
    std::string caption_;
    Layout layout_;
};

class Frame : public Container {
  public:
    Frame(std::string name, std::string caption)
        : Container(WidgetKind::Frame, std::move(name), std::move(caption)) {}
};

// Life of a form: load() once before it is first shown, activate each time that it comes up, unload() when it
// closes; after that it can be loaded again.
class Form : public Container {
  public:
    Form(std::string name, std::string caption)
        : Container(WidgetKind::Form, std::move(name), std::move(caption)) {}
    ~Form() override { destroyed(); }

    std::vector<Timer*> timers;
    Button* defaultButton = nullptr;  // Enter
    // The only control in which Enter presses it, to which Enter leads from other text boxes; without one it
    // presses in all.
    Widget* defaultField = nullptr;
    Button* cancelButton = nullptr;  // Escape; without one Escape closes the form
    bool resizable = false;

    bool loaded() const noexcept { return loaded_; }
    // Fires loading unless the form is loaded.
    void load();
    // For the backend: the form is on the screen. Loads it first.
    void activate();
    // Fires unloading and then unloaded, on which a backend takes the form from the screen. Does nothing
    // unless loaded.
    void unload();

    Signal<> loading;
    Signal<> activated;
    Signal<> unloading;
    Signal<> unloaded;
    // The form is going, loaded or not: a backend that still shows it lets go without touching its controls.
    Signal<> destroyed;

  private:
    bool loaded_ = false;
};

}  // namespace dravik::ui
