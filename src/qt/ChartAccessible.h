// A chart as a screen reader meets it: a chart with one child for each visible bar, each with its name and
// its place.
#pragma once

#include <QAccessibleWidget>
#include <QHash>

#include "qt/ChartView.h"

namespace dravik::qt {

class ChartAccessible : public QAccessibleWidget {
  public:
    explicit ChartAccessible(ChartView* view) : QAccessibleWidget(view, QAccessible::Chart) {}
    ~ChartAccessible() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    ChartView* view() const { return static_cast<ChartView*>(widget()); }

    mutable QHash<int, QAccessible::Id> bars_;  // by place among the visible bars
};

}  // namespace dravik::qt
