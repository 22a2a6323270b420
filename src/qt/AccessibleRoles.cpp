#include "qt/AccessibleRoles.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "qt/CellView.h"
#include "qt/ChartAccessible.h"
#include "qt/ChartView.h"
#include "qt/PartView.h"

namespace dravik::qt {
namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* cell = qobject_cast<CellView*>(object)) return new QAccessibleWidget(cell, QAccessible::Cell);
    if (auto* chart = qobject_cast<ChartView*>(object)) return new ChartAccessible(chart);
    if (auto* part = qobject_cast<PartView*>(object))
        return new QAccessibleWidget(part, QAccessible::Graphic);
    return nullptr;
}

}  // namespace

void installAccessibleRoles() {
    static const bool once = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(once);
}

}  // namespace dravik::qt
