#include "ui/Layout.h"

namespace dravik::ui {
namespace {

Layout group(Layout::Kind kind, std::vector<Layout> children) {
    Layout layout;
    layout.kind = kind;
    layout.children = std::move(children);
    return layout;
}

}  // namespace

Layout item(Widget& widget) {
    Layout layout;
    layout.kind = Layout::Kind::Widget;
    layout.widget = &widget;
    return layout;
}

Layout space(int stretch) {
    Layout layout;
    layout.stretch = stretch;
    return layout;
}

Layout row(std::vector<Layout> children) {
    return group(Layout::Kind::Row, std::move(children));
}

Layout column(std::vector<Layout> children) {
    return group(Layout::Kind::Column, std::move(children));
}

Layout table(std::vector<std::vector<Layout>> rows) {
    Layout layout = group(Layout::Kind::Table, {});
    int tableRow = 0;
    for (auto& cells : rows) {
        int tableColumn = 0;
        for (auto& cell : cells) {
            cell.tableRow = tableRow;
            cell.tableColumn = tableColumn;
            tableColumn += cell.columnSpan;
            layout.children.push_back(std::move(cell));
        }
        ++tableRow;
    }
    return layout;
}

Layout fixed(const std::vector<std::pair<Widget*, Place>>& places) {
    Layout layout = group(Layout::Kind::Fixed, {});
    for (const auto& [widget, place] : places) {
        layout.children.push_back(item(*widget));
        layout.children.back().place = place;
    }
    return layout;
}

}  // namespace dravik::ui
