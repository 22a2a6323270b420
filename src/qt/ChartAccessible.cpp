#include "qt/ChartAccessible.h"

#include <QPointer>

#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

class BarAccessible : public QAccessibleInterface {
  public:
    BarAccessible(ChartView* view, int index) : view_(view), index_(index) {}

    int index() const noexcept { return index_; }

    bool isValid() const override { return view_ && index_ < view_->visibleBars(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        return isValid() && kind == QAccessible::Name ? qtText(view_->visibleBar(index_).accessibleName)
                                                      : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        if (!isValid()) return {};
        const QRect place = view_->visibleBarPlace(index_).toAlignedRect();
        return {view_->mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::Role role() const override { return QAccessible::Graphic; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        state.readOnly = true;
        return state;
    }

  private:
    QPointer<ChartView> view_;
    int index_;
};

}  // namespace

ChartAccessible::~ChartAccessible() {
    for (const QAccessible::Id id : std::as_const(bars_)) QAccessible::deleteAccessibleInterface(id);
}

int ChartAccessible::childCount() const {
    return view()->visibleBars();
}

QAccessibleInterface* ChartAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    if (const auto known = bars_.constFind(index); known != bars_.constEnd())
        return QAccessible::accessibleInterface(*known);
    auto* bar = new BarAccessible(view(), index);
    bars_.insert(index, QAccessible::registerAccessibleInterface(bar));
    return bar;
}

QAccessibleInterface* ChartAccessible::childAt(int x, int y) const {
    for (int i = 0; i < childCount(); ++i)
        if (QAccessibleInterface* bar = child(i); bar && bar->rect().contains(x, y)) return bar;
    return nullptr;
}

int ChartAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* bar = dynamic_cast<const BarAccessible*>(child);
    return bar && bar->parent() == this ? bar->index() : -1;
}

}  // namespace dravik::qt
