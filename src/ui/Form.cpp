#include "ui/Form.h"

#include <utility>

namespace dravik::ui {
namespace {

Widget* findIn(const Layout& layout, std::string_view name) {
    if (layout.widget) {
        if (layout.widget->name() == name) return layout.widget;
        if (const auto* container = dynamic_cast<const Container*>(layout.widget))
            return container->find(name);
    }
    for (const auto& child : layout.children)
        if (auto* found = findIn(child, name)) return found;
    return nullptr;
}

}  // namespace

Container::Container(WidgetKind kind, std::string name, std::string caption)
    : Widget(kind, std::move(name), kButtonFaceColor, kButtonTextColor), caption_(std::move(caption)) {}

Widget* Container::find(std::string_view name) const {
    return findIn(layout_, name);
}

void Form::load() {
    if (std::exchange(loaded_, true)) return;
    loading();
}

void Form::activate() {
    load();
    activated();
}

void Form::unload() {
    if (!loaded_) return;
    unloading();
    loaded_ = false;
    unloaded();
}

}  // namespace dravik::ui
