#include "windows/win32/LayoutGeometry.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "windows/win32/Dpi.h"

namespace dravik::win32 {
namespace {

int& along(Extent& extent, bool across) {
    return across ? extent.width : extent.height;
}
int along(const Extent& extent, bool across) {
    return across ? extent.width : extent.height;
}

Extent largest(const Extent& a, const Extent& b) {
    return {std::max(a.width, b.width), std::max(a.height, b.height)};
}

// Takes `amount` from `lengths` in proportion to what each has above its least length.
void shrink(std::vector<int>& lengths, const std::vector<int>& least, int amount) {
    std::int64_t spare = 0;
    for (std::size_t i = 0; i < lengths.size(); ++i) spare += std::max(lengths[i] - least[i], 0);
    for (std::size_t i = 0; i < lengths.size() && spare > 0 && amount > 0; ++i) {
        const int own = std::max(lengths[i] - least[i], 0);
        const int cut = static_cast<int>(std::min<std::int64_t>(own, amount * std::int64_t{own} / spare));
        lengths[i] -= cut;
        amount -= cut;
        spare -= own;
    }
}

}  // namespace

LayoutGeometry::LayoutGeometry(const ui::Layout& layout, int dpi, const MeasureOf& measureOf, int spacing)
    : dpi_(dpi), spacing_(scaled(spacing, dpi)), root_(build(layout, measureOf)) {}

LayoutGeometry::Node LayoutGeometry::build(const ui::Layout& layout, const MeasureOf& measureOf) const {
    Node node;
    node.layout = &layout;
    for (const ui::Layout& child : layout.children) node.children.push_back(build(child, measureOf));
    switch (layout.kind) {
        case ui::Layout::Kind::Empty:
            node.visible = false;
            break;
        case ui::Layout::Kind::Widget: {
            const Measure measure = measureOf(*layout.widget);
            node.minimum = measure.minimum;
            if (layout.stretch > 0 && measure.shrunkWidth >= 0)
                node.minimum.width = std::min(node.minimum.width, measure.shrunkWidth);
            node.preferred = largest(measure.preferred, measure.minimum);
            node.visible = measure.visible;
            node.growsX = measure.growsX;
            node.growsY = measure.growsY;
            node.greedyX = measure.greedyX;
            break;
        }
        case ui::Layout::Kind::Row:
            measureBox(node, true);
            break;
        case ui::Layout::Kind::Column:
            measureBox(node, false);
            break;
        case ui::Layout::Kind::Table:
            measureTable(node);
            break;
        case ui::Layout::Kind::Fixed:
            measureFixed(node);
            break;
    }
    const Extent least{pixels(layout.minimumWidth, dpi_), pixels(layout.minimumHeight, dpi_)};
    node.minimum = largest(node.minimum, least);
    node.preferred = largest(node.preferred, least);
    return node;
}

std::vector<LayoutGeometry::Slot> LayoutGeometry::boxSlots(const Node& node, bool across) {
    std::vector<Slot> slots;
    for (const Node& child : node.children) {
        Slot slot;
        slot.space = child.layout->kind == ui::Layout::Kind::Empty;
        slot.visible = child.visible;
        if (slot.space || slot.visible) {
            slot.minimum = along(child.minimum, across);
            slot.preferred = along(child.preferred, across);
            slot.stretch = child.layout->stretch;
            slot.greedy = across && child.greedyX;
        }
        slots.push_back(slot);
    }
    return slots;
}

int LayoutGeometry::gaps(const std::vector<Slot>& slots, int spacing) {
    const auto visible =
        std::count_if(slots.begin(), slots.end(), [](const Slot& slot) { return slot.visible; });
    return visible > 1 ? static_cast<int>(visible - 1) * spacing : 0;
}

void LayoutGeometry::measureBox(Node& node, bool across) const {
    const std::vector<Slot> slots = boxSlots(node, across);
    node.visible = false;
    node.growsX = node.growsY = true;
    for (const Node& child : node.children) {
        if (!child.visible) continue;
        node.visible = true;
        node.greedyX |= child.greedyX;
        node.minimum = largest(node.minimum, child.minimum);
        node.preferred = largest(node.preferred, child.preferred);
    }
    int& least = along(node.minimum, across) = gaps(slots, spacing_);
    int& wanted = along(node.preferred, across) = least;
    for (const Slot& slot : slots) {
        least += slot.minimum;
        wanted += slot.preferred;
    }
    node.greedyX |=
        across && std::any_of(slots.begin(), slots.end(), [](const Slot& s) { return s.stretch > 0; });
}

std::vector<LayoutGeometry::Slot> LayoutGeometry::tableColumns(const Node& node, int spacing) {
    std::vector<Slot> columns;
    for (const Node& child : node.children) {
        const auto end = static_cast<std::size_t>(child.layout->tableColumn + child.layout->columnSpan);
        if (columns.size() < end) columns.resize(end);
        if (!child.visible || child.layout->columnSpan > 1) continue;
        Slot& column = columns[end - 1];
        column.visible = true;
        column.minimum = std::max(column.minimum, child.minimum.width);
        column.preferred = std::max(column.preferred, child.preferred.width);
    }
    for (const Node& child : node.children) {
        if (!child.visible || child.layout->columnSpan < 2) continue;
        int least = child.minimum.width;
        int wanted = child.preferred.width;
        Slot* last = nullptr;
        for (int k = 0; k < child.layout->columnSpan; ++k) {
            Slot& column = columns[static_cast<std::size_t>(child.layout->tableColumn + k)];
            if (last) {
                least -= spacing;
                wanted -= spacing;
            }
            last = &column;
            column.visible = true;
            least -= column.minimum;
            wanted -= column.preferred;
        }
        last->minimum += std::max(least, 0);
        last->preferred = std::max(last->preferred + std::max(wanted, 0), last->minimum);
    }
    const std::vector<int>& stretch = node.layout->columnStretch;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!stretch.empty())
            columns[i].stretch = i < stretch.size() && columns[i].visible ? stretch[i] : 0;
        else
            columns[i].stretch = i + 1 == columns.size() ? 1 : 0;
    }
    return columns;
}

// Rows share spare height where anything in them can use it.
std::vector<LayoutGeometry::Slot> LayoutGeometry::tableRows(const Node& node) {
    std::vector<Slot> rows;
    for (const Node& child : node.children) {
        const auto index = static_cast<std::size_t>(child.layout->tableRow);
        if (rows.size() <= index) rows.resize(index + 1);
        if (!child.visible) continue;
        Slot& row = rows[index];
        row.visible = true;
        row.minimum = std::max(row.minimum, child.minimum.height);
        row.preferred = std::max(row.preferred, child.preferred.height);
        if (child.growsY && child.layout->fill) row.stretch = 1;
    }
    return rows;
}

void LayoutGeometry::measureTable(Node& node) const {
    const std::vector<Slot> columns = tableColumns(node, spacing_);
    const std::vector<Slot> rows = tableRows(node);
    node.visible = std::any_of(rows.begin(), rows.end(), [](const Slot& row) { return row.visible; });
    node.minimum = node.preferred = {gaps(columns, spacing_), gaps(rows, spacing_)};
    for (const Slot& column : columns) {
        node.minimum.width += column.minimum;
        node.preferred.width += column.preferred;
    }
    for (const Slot& row : rows) {
        node.minimum.height += row.minimum;
        node.preferred.height += row.preferred;
    }
}

void LayoutGeometry::measureFixed(Node& node) const {
    node.visible = false;
    for (const Node& child : node.children) {
        node.visible |= child.visible;
        const ui::Place& place = child.layout->place;
        node.minimum = largest(
            node.minimum, {pixels(place.left + place.width, dpi_), pixels(place.top + place.height, dpi_)});
    }
    node.preferred = node.minimum;
    node.growsX = node.growsY = true;
}

std::vector<int> LayoutGeometry::share(const std::vector<Slot>& slots, int room) {
    std::vector<int> lengths;
    std::vector<int> least;
    std::int64_t weights = 0;
    bool stretches = false;
    for (const Slot& slot : slots) stretches |= slot.stretch > 0;
    std::vector<int> weight;
    for (const Slot& slot : slots) {
        lengths.push_back(slot.preferred);
        least.push_back(slot.minimum);
        weight.push_back(stretches ? slot.stretch : slot.greedy ? 1 : 0);
        weights += weight.back();
    }
    const int wanted = std::accumulate(lengths.begin(), lengths.end(), 0);
    if (weights == 0) {
        if (room < wanted) shrink(lengths, least, wanted - room);
        return lengths;
    }

    // Those that stretch divide what the others leave by their weights, none going below its least length.
    int left = room;
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (weight[i] == 0) left -= lengths[i];
    int leastOfWeighted = 0;
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (weight[i] > 0) leastOfWeighted += least[i];
    if (left < leastOfWeighted) {
        for (std::size_t i = 0; i < slots.size(); ++i)
            if (weight[i] > 0) lengths[i] = least[i];
        shrink(lengths, least, leastOfWeighted - left);
        return lengths;
    }
    std::vector<bool> settled(slots.size());
    for (bool again = true; again;) {
        again = false;
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (weight[i] == 0 || settled[i] || left * std::int64_t{weight[i]} >= least[i] * weights)
                continue;
            settled[i] = again = true;
            lengths[i] = least[i];
            left -= least[i];
            weights -= weight[i];
        }
    }
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (weight[i] == 0 || settled[i]) continue;
        lengths[i] = static_cast<int>(left * std::int64_t{weight[i]} / weights);
        left -= lengths[i];
        weights -= weight[i];
    }
    return lengths;
}

std::vector<PlacedWidget> LayoutGeometry::place(const Box& box) const {
    std::vector<PlacedWidget> placed;
    if (root_.layout->kind == ui::Layout::Kind::Widget || root_.visible)
        placeNode(root_,
                  {box.left, box.top, std::max(box.width, root_.minimum.width),
                   std::max(box.height, root_.minimum.height)},
                  placed);
    return placed;
}

void LayoutGeometry::placeNode(const Node& node, const Box& box, std::vector<PlacedWidget>& placed) const {
    if (!node.visible) return;
    switch (node.layout->kind) {
        case ui::Layout::Kind::Widget:
            placed.push_back({node.layout->widget, box});
            break;
        case ui::Layout::Kind::Row:
            placeBox(node, box, true, placed);
            break;
        case ui::Layout::Kind::Column:
            placeBox(node, box, false, placed);
            break;
        case ui::Layout::Kind::Table:
            placeTable(node, box, placed);
            break;
        case ui::Layout::Kind::Fixed:
            for (const Node& child : node.children) {
                const ui::Place& place = child.layout->place;
                const int left = pixels(place.left, dpi_);
                const int top = pixels(place.top, dpi_);
                placeNode(child,
                          {box.left + left, box.top + top, pixels(place.left + place.width, dpi_) - left,
                           pixels(place.top + place.height, dpi_) - top},
                          placed);
            }
            break;
        case ui::Layout::Kind::Empty:
            break;
    }
}

void LayoutGeometry::placeBox(const Node& node, const Box& box, bool across,
                              std::vector<PlacedWidget>& placed) const {
    const std::vector<Slot> slots = boxSlots(node, across);
    const int room = (across ? box.width : box.height) - gaps(slots, spacing_);
    const std::vector<int> lengths = share(slots, room);
    int place = across ? box.left : box.top;
    bool first = true;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        const Node& child = node.children[i];
        if (slots[i].space) {
            place += lengths[i];
            continue;
        }
        if (!child.visible) continue;
        if (!std::exchange(first, false)) place += spacing_;
        const int length = lengths[i];
        Box own = across ? Box{place, box.top, length, box.height} : Box{box.left, place, box.width, length};
        place += length;
        if (across) {
            if (!child.layout->fill)
                own.height = std::min(child.preferred.height, box.height);
            else if (!child.growsY && child.preferred.height < own.height) {
                own.top += (own.height - child.preferred.height) / 2;
                own.height = child.preferred.height;
            }
            if (!child.growsX) own.width = std::min(own.width, child.preferred.width);
        } else {
            if (!child.layout->fill || !child.growsX) own.width = std::min(child.preferred.width, box.width);
            if (!child.growsY) own.height = std::min(own.height, child.preferred.height);
        }
        placeNode(child, own, placed);
    }
}

void LayoutGeometry::placeTable(const Node& node, const Box& box, std::vector<PlacedWidget>& placed) const {
    const std::vector<Slot> columns = tableColumns(node, spacing_);
    const std::vector<Slot> rows = tableRows(node);
    const std::vector<int> widths = share(columns, box.width - gaps(columns, spacing_));
    const std::vector<int> heights = share(rows, box.height - gaps(rows, spacing_));
    const auto starts = [this](const std::vector<Slot>& slots, const std::vector<int>& lengths, int from) {
        std::vector<int> places;
        for (std::size_t i = 0; i < slots.size(); ++i) {
            places.push_back(from);
            if (slots[i].visible) from += lengths[i] + spacing_;
        }
        return places;
    };
    const std::vector<int> lefts = starts(columns, widths, box.left);
    const std::vector<int> tops = starts(rows, heights, box.top);
    for (const Node& child : node.children) {
        if (!child.visible) continue;
        const auto row = static_cast<std::size_t>(child.layout->tableRow);
        const auto first = static_cast<std::size_t>(child.layout->tableColumn);
        const std::size_t last = first + static_cast<std::size_t>(child.layout->columnSpan) - 1;
        Box own{lefts[first], tops[row], lefts[last] + widths[last] - lefts[first], heights[row]};
        if (!child.layout->fill || !child.growsX) own.width = std::min(own.width, child.preferred.width);
        if ((!child.layout->fill || !child.growsY) && child.preferred.height < own.height) {
            own.top += (own.height - child.preferred.height) / 2;
            own.height = child.preferred.height;
        }
        placeNode(child, own, placed);
    }
}

}  // namespace dravik::win32
