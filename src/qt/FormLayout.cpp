#include "qt/FormLayout.h"

#include <QLabel>
#include <algorithm>
#include <utility>

#include "qt/CellView.h"
#include "qt/Peers.h"
#include "ui/Lengths.h"
#include "ui/Visit.h"

namespace dravik::qt {

FormLayout::FormLayout(QWidget& container, const ui::Layout& arrangement)
    : QLayout(&container), arrangement_(&arrangement) {
    setContentsMargins(ui::kMargin, ui::kMargin, ui::kMargin, ui::kMargin);
    CellGroup* cells = nullptr;
    addViews(arrangement, cells);
}

// Cells that stand beside each other in the arrangement are a group.
void FormLayout::addViews(const ui::Layout& part, CellGroup*& cells) {
    if (part.widget) return addView(*part.widget, cells);
    CellGroup* own = nullptr;
    for (const ui::Layout& child : part.children) addViews(child, own);
}

void FormLayout::addView(ui::Widget& model, CellGroup*& cells) {
    QWidget* container = parentWidget();
    QWidget* view = ui::visit(model, [container](auto& kind) { return make(kind, container); });
    if (auto* cell = qobject_cast<CellView*>(view); cell && cell->focusPolicy() != Qt::NoFocus) {
        if (!cells) cells = new CellGroup(container);
        cells->add(*cell);
    }
    giveAccessKey(model, view);
    addWidget(view);
    items_.back().model = &model;
}

void FormLayout::giveAccessKey(const ui::Widget& model, QWidget* view) {
    if (waiting_ && view->focusPolicy() != Qt::NoFocus) std::exchange(waiting_, nullptr)->setBuddy(view);
    const auto* label = dynamic_cast<const ui::Label*>(&model);
    if (label && label->usesMnemonic() && label->caption().find('&') != std::string::npos)
        waiting_ = qobject_cast<QLabel*>(view);
}

void FormLayout::addItem(QLayoutItem* item) {
    items_.push_back({nullptr, std::unique_ptr<QLayoutItem>(item)});
}

QLayoutItem* FormLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].view.get() : nullptr;
}

QLayoutItem* FormLayout::takeAt(int index) {
    if (!itemAt(index)) return nullptr;
    QLayoutItem* taken = items_[static_cast<std::size_t>(index)].view.release();
    items_.erase(items_.begin() + index);
    return taken;
}

QLayoutItem* FormLayout::itemOf(const ui::Widget& model) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Item& item) { return item.model == &model; });
    return found == items_.end() ? nullptr : found->view.get();
}

// What a view asks for by its size policy. Where it is given a share of the width, its minimum size hint is
// enough: a text is cut then.
ui::Measure FormLayout::measure(const ui::Widget& model) const {
    ui::Measure measure;
    QLayoutItem* item = itemOf(model);
    measure.visible = item && !item->isEmpty();
    if (!measure.visible) return measure;
    const QSize least = item->minimumSize();
    const QSize wanted = item->sizeHint();
    const QSizePolicy policy = item->widget()->sizePolicy();
    measure.minimum = {least.width(), least.height()};
    measure.preferred = {wanted.width(), wanted.height()};
    measure.growsX = policy.horizontalPolicy() & QSizePolicy::GrowFlag;
    measure.growsY = policy.verticalPolicy() & QSizePolicy::GrowFlag;
    measure.greedyX = policy.horizontalPolicy() & QSizePolicy::ExpandFlag;
    measure.shrunkWidth = item->widget()->minimumSizeHint().width();
    return measure;
}

const ui::LayoutGeometry& FormLayout::arranged() const {
    if (!geometry_)
        geometry_.emplace(*arrangement_, ui::kUsualDpi,
                          [this](const ui::Widget& model) { return measure(model); });
    return *geometry_;
}

void FormLayout::detach() {
    arranged();
    arrangement_ = nullptr;
}

void FormLayout::invalidate() {
    if (arrangement_) geometry_.reset();
    QLayout::invalidate();
}

QSize FormLayout::withMargins(const ui::Extent& inside) const {
    return QSize(inside.width, inside.height).grownBy(contentsMargins());
}

QSize FormLayout::minimumSize() const {
    return withMargins(arranged().minimum());
}

QSize FormLayout::sizeHint() const {
    return withMargins(arranged().preferred());
}

void FormLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    if (!arrangement_) return;
    const QRect inside = contentsRect();
    const bool rightToLeft = parentWidget()->layoutDirection() == Qt::RightToLeft;
    for (const auto& [widget, box] :
         arranged().place({inside.x(), inside.y(), inside.width(), inside.height()}, rightToLeft))
        itemOf(*widget)->setGeometry(QRect(box.left, box.top, box.width, box.height));
}

}  // namespace dravik::qt
