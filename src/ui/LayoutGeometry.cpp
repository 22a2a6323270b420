#include "ui/LayoutGeometry.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "ui/Lengths.h"

namespace dravik::ui {
namespace {

// A column or row of a group.
struct Slot {
    int minimum = 0;
    int preferred = 0;
    int stretch = 0;
    bool greedy = false;
    bool visible = false;  // stands off its neighbours, as a space does not

    void hold(int least, int wanted) {
        visible = true;
        minimum = std::max(minimum, least);
        preferred = std::max(preferred, wanted);
    }
};

struct Span {
    int start;
    int length;
};

Extent largest(const Extent& a, const Extent& b) {
    return {std::max(a.width, b.width), std::max(a.height, b.height)};
}

// What the gaps between the slots take.
int gaps(const std::vector<Slot>& slots, int spacing) {
    const auto visible =
        std::count_if(slots.begin(), slots.end(), [](const Slot& slot) { return slot.visible; });
    return visible > 1 ? static_cast<int>(visible - 1) * spacing : 0;
}

// All slots one after the other.
Slot total(const std::vector<Slot>& slots, int spacing) {
    Slot all;
    all.minimum = all.preferred = gaps(slots, spacing);
    for (const Slot& slot : slots) {
        all.minimum += slot.minimum;
        all.preferred += slot.preferred;
    }
    return all;
}

// Takes `amount` from `lengths` in proportion to what each has above its least length.
void shrink(std::vector<int>& lengths, const std::vector<Slot>& slots, int amount) {
    std::int64_t spare = 0;
    for (std::size_t i = 0; i < lengths.size(); ++i) spare += std::max(lengths[i] - slots[i].minimum, 0);
    for (std::size_t i = 0; i < lengths.size() && spare > 0 && amount > 0; ++i) {
        const int own = std::max(lengths[i] - slots[i].minimum, 0);
        const int cut = static_cast<int>(std::min<std::int64_t>(own, amount * std::int64_t{own} / spare));
        lengths[i] -= cut;
        amount -= cut;
        spare -= own;
    }
}

// Divides `room` by the weights among those that have one, none of which goes below its least length.
void divide(std::vector<int>& lengths, const std::vector<Slot>& slots, std::vector<int> weights, int room) {
    std::int64_t all = 0;
    for (const int weight : weights) all += weight;
    for (bool again = true; std::exchange(again, false);)
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (weights[i] == 0 || room * std::int64_t{weights[i]} >= slots[i].minimum * all) continue;
            again = true;
            lengths[i] = slots[i].minimum;
            room -= lengths[i];
            all -= std::exchange(weights[i], 0);
        }
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (weights[i] == 0) continue;
        lengths[i] = static_cast<int>(room * std::int64_t{weights[i]} / all);
        room -= lengths[i];
        all -= weights[i];
    }
}

// The length of each slot for the room that they have together, gaps left out. Those that stretch, or else
// the greedy ones, take what the others leave.
std::vector<int> share(const std::vector<Slot>& slots, int room) {
    const bool stretches =
        std::any_of(slots.begin(), slots.end(), [](const Slot& slot) { return slot.stretch > 0; });
    std::vector<int> lengths;
    std::vector<int> weights;
    int spare = room;
    int leastOfWeighted = 0;
    for (const Slot& slot : slots) {
        weights.push_back(stretches ? slot.stretch : slot.greedy ? 1 : 0);
        lengths.push_back(weights.back() > 0 ? slot.minimum : slot.preferred);
        spare -= lengths.back();
        if (weights.back() > 0) leastOfWeighted += slot.minimum;
    }
    if (spare < 0)
        shrink(lengths, slots, -spare);
    else
        divide(lengths, slots, std::move(weights), spare + leastOfWeighted);
    return lengths;
}

// Where each slot stands in the room; without slots there is one, the room itself.
std::vector<Span> spread(const std::vector<Slot>& slots, Span room, int spacing) {
    if (slots.empty()) return {room};
    const std::vector<int> lengths = share(slots, room.length - gaps(slots, spacing));
    std::vector<Span> spans;
    int place = room.start;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        spans.push_back({place, lengths[i]});
        place += lengths[i] + (slots[i].visible ? spacing : 0);
    }
    return spans;
}

}  // namespace

// A part of the layout with what it asks for.
struct LayoutGeometry::Node {
    const Layout& layout;
    const int spacing;
    Measure measure;
    std::vector<Node> children;
    // Of a row, column or table: where its children stand. None in a direction that all of them share.
    std::vector<Slot> columns;
    std::vector<Slot> rows;
    Box fixedPlace;  // in a group of fixed places

    Node(const Layout& part, int dpi, const MeasureOf& measureOf);

    void measureGroup();
    void measureFixed();
    std::vector<Slot> boxSlots(bool across) const;
    std::vector<Slot> tableColumns() const;
    std::vector<Slot> tableRows() const;
    void place(const Box& box, bool mirrored, std::vector<PlacedWidget>& placed) const;
    // The place of a child in the cell that it has to itself.
    Box inCell(const Node& child, Box cell) const;
};

LayoutGeometry::Node::Node(const Layout& part, int dpi, const MeasureOf& measureOf)
    : layout(part), spacing(scaled(kSpacing, dpi)) {
    for (const Layout& child : layout.children) children.emplace_back(child, dpi, measureOf);
    switch (layout.kind) {
        case Layout::Kind::Empty:
            measure.visible = false;
            break;
        case Layout::Kind::Widget:
            measure = measureOf(*layout.widget);
            measure.preferred = largest(measure.preferred, measure.minimum);
            if (layout.stretch > 0 && measure.shrunkWidth >= 0)
                measure.minimum.width = std::min(measure.minimum.width, measure.shrunkWidth);
            break;
        case Layout::Kind::Row:
            columns = boxSlots(true);
            measureGroup();
            break;
        case Layout::Kind::Column:
            rows = boxSlots(false);
            measureGroup();
            break;
        case Layout::Kind::Table:
            columns = tableColumns();
            rows = tableRows();
            measureGroup();
            break;
        case Layout::Kind::Fixed:
            measureFixed();
            break;
    }
    const Extent least{pixels(layout.minimumWidth, dpi), pixels(layout.minimumHeight, dpi)};
    measure.minimum = largest(measure.minimum, least);
    measure.preferred = largest(measure.preferred, least);
    const Place& place = layout.place;
    fixedPlace.left = pixels(place.left, dpi);
    fixedPlace.top = pixels(place.top, dpi);
    fixedPlace.width = pixels(place.left + place.width, dpi) - fixedPlace.left;
    fixedPlace.height = pixels(place.top + place.height, dpi) - fixedPlace.top;
}

void LayoutGeometry::Node::measureGroup() {
    measure.visible = false;
    for (const Node& child : children) {
        if (!child.measure.visible) continue;
        measure.visible = true;
        measure.minimum = largest(measure.minimum, child.measure.minimum);
        measure.preferred = largest(measure.preferred, child.measure.preferred);
        if (layout.kind != Layout::Kind::Table) measure.greedyX |= child.measure.greedyX;
    }
    if (layout.kind != Layout::Kind::Column) {
        const Slot all = total(columns, spacing);
        measure.minimum.width = all.minimum;
        measure.preferred.width = all.preferred;
    }
    if (layout.kind != Layout::Kind::Row) {
        const Slot all = total(rows, spacing);
        measure.minimum.height = all.minimum;
        measure.preferred.height = all.preferred;
    }
    if (layout.kind == Layout::Kind::Row)
        measure.greedyX |=
            std::any_of(columns.begin(), columns.end(), [](const Slot& slot) { return slot.stretch > 0; });
}

void LayoutGeometry::Node::measureFixed() {
    measure.visible = false;
    for (const Node& child : children) {
        measure.visible |= child.measure.visible;
        const Box& place = child.fixedPlace;
        measure.minimum = largest(measure.minimum, {place.left + place.width, place.top + place.height});
    }
    measure.preferred = measure.minimum;
}

std::vector<Slot> LayoutGeometry::Node::boxSlots(bool across) const {
    std::vector<Slot> slots;
    for (const Node& child : children) {
        Slot& slot = slots.emplace_back();
        const Measure& asked = child.measure;
        if (!asked.visible && child.layout.kind != Layout::Kind::Empty) continue;
        slot.visible = asked.visible;
        slot.minimum = across ? asked.minimum.width : asked.minimum.height;
        slot.preferred = across ? asked.preferred.width : asked.preferred.height;
        slot.stretch = child.layout.stretch;
        slot.greedy = across && asked.greedyX;
    }
    return slots;
}

std::vector<Slot> LayoutGeometry::Node::tableColumns() const {
    std::vector<Slot> slots;
    for (const Node& child : children) {
        const auto end = static_cast<std::size_t>(child.layout.tableColumn + child.layout.columnSpan);
        if (slots.size() < end) slots.resize(end);
        if (child.measure.visible && child.layout.columnSpan == 1)
            slots[end - 1].hold(child.measure.minimum.width, child.measure.preferred.width);
    }
    // What a cell of several columns needs above what they have is given to the last of them.
    for (const Node& child : children) {
        const int span = child.layout.columnSpan;
        if (!child.measure.visible || span < 2) continue;
        int least = child.measure.minimum.width - (span - 1) * spacing;
        int wanted = child.measure.preferred.width - (span - 1) * spacing;
        Slot* last = nullptr;
        for (int k = 0; k < span; ++k) {
            last = &slots[static_cast<std::size_t>(child.layout.tableColumn + k)];
            last->visible = true;
            least -= last->minimum;
            wanted -= last->preferred;
        }
        last->minimum += std::max(least, 0);
        last->preferred = std::max(last->preferred + std::max(wanted, 0), last->minimum);
    }
    const std::vector<int>& stretch = layout.columnStretch;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (stretch.empty())
            slots[i].stretch = i + 1 == slots.size() ? 1 : 0;
        else if (i < stretch.size() && slots[i].visible)
            slots[i].stretch = stretch[i];
    }
    return slots;
}

// Rows share spare height where anything in them can use it.
std::vector<Slot> LayoutGeometry::Node::tableRows() const {
    std::vector<Slot> slots;
    for (const Node& child : children) {
        const auto index = static_cast<std::size_t>(child.layout.tableRow);
        if (slots.size() <= index) slots.resize(index + 1);
        if (!child.measure.visible) continue;
        slots[index].hold(child.measure.minimum.height, child.measure.preferred.height);
        if (child.measure.growsY && child.layout.fill) slots[index].stretch = 1;
    }
    return slots;
}

void LayoutGeometry::Node::place(const Box& box, bool mirrored, std::vector<PlacedWidget>& placed) const {
    if (!measure.visible) return;
    if (layout.kind == Layout::Kind::Widget) {
        placed.push_back({layout.widget, box});
        return;
    }
    if (layout.kind == Layout::Kind::Fixed) {
        for (const Node& child : children) {
            const Box& own = child.fixedPlace;
            child.place({box.left + own.left, box.top + own.top, own.width, own.height}, mirrored, placed);
        }
        return;
    }
    const bool isTable = layout.kind == Layout::Kind::Table;
    const std::vector<Span> across = spread(columns, {box.left, box.width}, spacing);
    const std::vector<Span> down = spread(rows, {box.top, box.height}, spacing);
    for (std::size_t i = 0; i < children.size(); ++i) {
        const Node& child = children[i];
        if (!child.measure.visible) continue;
        const auto column = isTable ? static_cast<std::size_t>(child.layout.tableColumn) : i;
        const auto row = isTable ? static_cast<std::size_t>(child.layout.tableRow) : i;
        const std::size_t span = isTable ? static_cast<std::size_t>(child.layout.columnSpan) : 1;
        const Span& first = columns.empty() ? across.front() : across[column];
        const Span& last = columns.empty() ? across.front() : across[column + span - 1];
        const Span& high = rows.empty() ? down.front() : down[row];
        const Box cell{first.start, high.start, last.start + last.length - first.start, high.length};
        Box own = inCell(child, cell);
        if (mirrored) own.left = 2 * box.left + box.width - own.left - own.width;
        child.place(own, mirrored, placed);
    }
}

Box LayoutGeometry::Node::inCell(const Node& child, Box cell) const {
    const Extent& wanted = child.measure.preferred;
    const bool fill = child.layout.fill;
    if (!child.measure.growsX || (!fill && layout.kind != Layout::Kind::Row))
        cell.width = std::min(cell.width, wanted.width);
    const bool ownHeight = !child.measure.growsY || (!fill && layout.kind != Layout::Kind::Column);
    if (!ownHeight || wanted.height >= cell.height) return cell;
    // Beside others it stands in the middle, unless a row is to keep it at the start.
    if (layout.kind == Layout::Kind::Table || (layout.kind == Layout::Kind::Row && fill))
        cell.top += (cell.height - wanted.height) / 2;
    cell.height = wanted.height;
    return cell;
}

LayoutGeometry::LayoutGeometry(const Layout& layout, int dpi, const MeasureOf& measureOf)
    : root_(std::make_shared<const Node>(layout, dpi, measureOf)) {}

Extent LayoutGeometry::minimum() const {
    return root_->measure.minimum;
}

Extent LayoutGeometry::preferred() const {
    return root_->measure.preferred;
}

std::vector<PlacedWidget> LayoutGeometry::place(const Box& box, bool rightToLeft) const {
    std::vector<PlacedWidget> placed;
    root_->place(
        {box.left, box.top, std::max(box.width, minimum().width), std::max(box.height, minimum().height)},
        rightToLeft, placed);
    return placed;
}

}  // namespace dravik::ui
