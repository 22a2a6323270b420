// What every control of the screen has in common: a name, a state that can be read and set, events, and a
// signal when the state changes. No window system is known here; a backend shows the state and
// fires the events.
#pragma once

#include <string>

#include "ui/Color.h"
#include "ui/Signal.h"

namespace dravik::ui {

enum class WidgetKind {
    Label,
    TextBox,
    Button,
    CheckBox,
    OptionButton,
    ComboBox,
    ListBox,
    Frame,
    ProgressBar,
    StatusBar,
    Toolbar,
    UpDown,
    Grid,
    Chart,
    PictureGrid,
    Form,
};

// What changed, for a watcher to show no more than it must.
enum class Change {
    Caption,  // caption or text
    Enabled,
    Visible,
    Appearance,  // colours, boldness, font size, alignment, picture
    ToolTip,
    Value,      // checked, progress, position, pressed
    Items,      // the entries of a list, the panels of a bar, the content of a grid or chart
    Selection,  // chosen entry, selected text, current cell
    Focus,      // the keyboard focus is asked for
    Name,       // accessible name
};

// Mouse buttons and shift states as the events carry them.
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;
constexpr int kShiftMask = 1;
constexpr int kCtrlMask = 2;
constexpr int kAltMask = 4;

// Key codes that the system acts on.
constexpr int kKeyInsert = 45;
constexpr int kKeyDelete = 46;

// `x` and `y` are twips (1/1440 inch) from the widget's left-top corner; on a chart they are its user units.
struct MouseEvent {
    int button = 0;
    int shift = 0;
    double x = 0;
    double y = 0;
};

class Widget {
  public:
    Widget(const Widget&) = delete;
    Widget& operator=(const Widget&) = delete;
    virtual ~Widget() = default;

    WidgetKind kind() const noexcept { return kind_; }
    const std::string& name() const noexcept { return name_; }

    bool enabled() const noexcept { return enabled_; }
    bool visible() const noexcept { return visible_; }
    bool bold() const noexcept { return bold_; }
    Color backColor() const noexcept { return backColor_; }
    Color foreColor() const noexcept { return foreColor_; }
    const std::string& toolTip() const noexcept { return toolTip_; }
    // What a screen reader says; when empty it says the caption.
    const std::string& accessibleName() const noexcept { return accessibleName_; }

    void setEnabled(bool enabled);
    void setVisible(bool visible);
    void setBold(bool bold);
    void setBackColor(Color color);
    void setForeColor(Color color);
    void setToolTip(std::string toolTip);
    void setAccessibleName(std::string name);

    // Asks for the keyboard focus; a backend grants it when the widget is shown and enabled.
    void setFocus();

    Signal<Change> changed;

    Signal<> gotFocus;
    Signal<> lostFocus;
    Signal<const MouseEvent&> mouseDown;
    Signal<const MouseEvent&> mouseMove;
    // Key code, shift state.
    Signal<int, int> keyDown;

  protected:
    Widget(WidgetKind kind, std::string name, Color backColor, Color foreColor);

    // Assigns and tells; false when the value is the same.
    template <class T>
    bool assign(T& member, T value, Change change) {
        if (member == value) return false;
        member = std::move(value);
        changed(change);
        return true;
    }

  private:
    const WidgetKind kind_;
    const std::string name_;
    bool enabled_ = true;
    bool visible_ = true;
    bool bold_ = false;
    Color backColor_;
    Color foreColor_;
    std::string toolTip_;
    std::string accessibleName_;
};

}  // namespace dravik::ui
