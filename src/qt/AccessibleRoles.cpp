#include "qt/AccessibleRoles.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>

#include "qt/CellView.h"
#include "qt/ChartAccessible.h"
#include "qt/ChartView.h"
#include "qt/PartView.h"

namespace dravik::qt {
namespace {

// Qt's own says the chosen entry as the name of a list that drops down.
class ChooserAccessible : public QAccessibleWidget {
  public:
    explicit ChooserAccessible(QComboBox& chooser)
        : QAccessibleWidget(&chooser, QAccessible::ComboBox), chooser_(chooser) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? chooser_.currentText() : QAccessibleWidget::text(kind);
    }
    int childCount() const override { return 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(chooser_.view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child->object() == chooser_.view() ? 0 : -1;
    }
    QStringList actionNames() const override {
        return {showMenuAction(), QAccessibleWidget::setFocusAction()};
    }
    void doAction(const QString& action) override {
        if (action == showMenuAction())
            chooser_.showPopup();
        else
            QAccessibleWidget::doAction(action);
    }

  private:
    QComboBox& chooser_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* cell = qobject_cast<CellView*>(object))
        return new QAccessibleWidget(
            cell, cell->focusPolicy() == Qt::NoFocus ? QAccessible::StaticText : QAccessible::Cell);
    if (auto* chooser = qobject_cast<QComboBox*>(object)) return new ChooserAccessible(*chooser);
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
