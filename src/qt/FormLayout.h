// What stands in a form or frame, laid out by its arrangement as every window system does it. The views are
// made in the order of the tree, which so becomes the order of the Tab key.
#pragma once

#include <QLayout>
#include <memory>
#include <optional>
#include <vector>

#include "ui/LayoutGeometry.h"

class QLabel;

namespace dravik::qt {

class CellGroup;

class FormLayout : public QLayout {
  public:
    // Makes the views in the container, which owns the layout.
    FormLayout(QWidget& container, const ui::Layout& arrangement);

    // The widgets are going away: from now on nothing is moved or measured.
    void detach();

    void addItem(QLayoutItem* item) override;
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    void invalidate() override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect& rect) override;

  private:
    struct Item {
        const ui::Widget* model;
        std::unique_ptr<QLayoutItem> view;
    };

    void addViews(const ui::Layout& part, CellGroup*& cells);
    void addView(ui::Widget& model, CellGroup*& cells);
    void giveAccessKey(const ui::Widget& model, QWidget* view);
    QLayoutItem* itemOf(const ui::Widget& model) const;
    ui::Measure measure(const ui::Widget& model) const;
    const ui::LayoutGeometry& arranged() const;
    QSize withMargins(const ui::Extent& inside) const;

    const ui::Layout* arrangement_;
    std::vector<Item> items_;
    QLabel* waiting_ = nullptr;  // a label whose access key goes to the next control
    mutable std::optional<ui::LayoutGeometry> geometry_;
};

}  // namespace dravik::qt
