#include "qt/LayoutBuilder.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <memory>

#include "qt/CellView.h"
#include "qt/ElidedLabel.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

constexpr int kSpacing = 6;
constexpr int kMargin = 9;

class Builder {
  public:
    explicit Builder(QWidget& container) : container_(&container) {}

    std::unique_ptr<QLayout> build(const ui::Layout& layout) {
        switch (layout.kind) {
            case ui::Layout::Kind::Row:
                return box(layout, QBoxLayout::LeftToRight);
            case ui::Layout::Kind::Table:
                return table(layout);
            case ui::Layout::Kind::Column:
                return box(layout, QBoxLayout::TopToBottom);
            default: {
                ui::Layout alone;
                alone.children.push_back(layout);
                alone.children.back().stretch = 1;
                return box(alone, QBoxLayout::TopToBottom);
            }
        }
    }

  private:
    static bool isGroup(const ui::Layout& layout) {
        return layout.kind == ui::Layout::Kind::Row || layout.kind == ui::Layout::Kind::Column ||
               layout.kind == ui::Layout::Kind::Table;
    }

    std::unique_ptr<QLayout> box(const ui::Layout& layout, QBoxLayout::Direction direction) {
        auto result = std::make_unique<QBoxLayout>(direction);
        result->setSpacing(kSpacing);
        CellGroup* cells = nullptr;
        for (const auto& child : layout.children) {
            if (child.kind == ui::Layout::Kind::Empty) {
                result->addStretch(child.stretch);
                continue;
            }
            if (isGroup(child) && child.minimumWidth == 0 && child.minimumHeight == 0) {
                result->addLayout(build(child).release(), child.stretch);
                continue;
            }
            QWidget* view = place(child, cells);
            Qt::Alignment alignment;
            if (!child.fill) alignment = direction == QBoxLayout::TopToBottom ? Qt::AlignLeft : Qt::AlignTop;
            result->addWidget(view, child.stretch, alignment);
            if (child.stretch > 0) letShrink(view);
        }
        // Spare length that nobody asked for, also when those who did are hidden, stays at the end.
        const bool across = direction == QBoxLayout::LeftToRight;
        result->addSpacerItem(new QSpacerItem(0, 0, across ? QSizePolicy::Expanding : QSizePolicy::Minimum,
                                              across ? QSizePolicy::Minimum : QSizePolicy::Expanding));
        return result;
    }

    std::unique_ptr<QLayout> table(const ui::Layout& layout) {
        auto result = std::make_unique<QGridLayout>();
        result->setSpacing(kSpacing);
        CellGroup* cells = nullptr;
        for (const auto& child : layout.children) {
            if (child.kind == ui::Layout::Kind::Empty) continue;
            if (isGroup(child) && child.minimumWidth == 0 && child.minimumHeight == 0) {
                result->addLayout(build(child).release(), child.tableRow, child.tableColumn, 1,
                                  child.columnSpan);
                continue;
            }
            QWidget* view = place(child, cells);
            result->addWidget(view, child.tableRow, child.tableColumn, 1, child.columnSpan,
                              child.fill ? Qt::Alignment() : Qt::AlignLeft | Qt::AlignVCenter);
        }
        for (std::size_t i = 0; i < layout.columnStretch.size(); ++i)
            result->setColumnStretch(static_cast<int>(i), layout.columnStretch[i]);
        if (layout.columnStretch.empty()) result->setColumnStretch(result->columnCount() - 1, 1);
        return result;
    }

    // A view for a widget, a field of fixed places or a group with a least size.
    QWidget* place(const ui::Layout& child, CellGroup*& cells) {
        QWidget* view = nullptr;
        if (child.kind == ui::Layout::Kind::Widget) {
            view = makeView(*child.widget, container_);
            join(view, cells);
            giveAccessKey(*child.widget, view);
        } else if (child.kind == ui::Layout::Kind::Fixed) {
            view = fixed(child);
        } else {
            view = new QWidget(container_);
            Builder inside(*view);
            auto layout = inside.build(child);
            layout->setContentsMargins(0, 0, 0, 0);
            view->setLayout(layout.release());
        }
        if (child.minimumWidth > 0) view->setMinimumWidth(pixels(child.minimumWidth));
        if (child.minimumHeight > 0) view->setMinimumHeight(pixels(child.minimumHeight));
        return view;
    }

    QWidget* fixed(const ui::Layout& layout) {
        auto* field = new QWidget(container_);
        Builder inside(*field);
        CellGroup* cells = nullptr;
        QRect all;
        for (const auto& child : layout.children) {
            QWidget* view = inside.place(child, cells);
            const ui::Place& place = child.place;
            const QRect rect(pixels(place.left), pixels(place.top), pixels(place.width),
                             pixels(place.height));
            view->setGeometry(rect);
            all |= rect;
        }
        field->setMinimumSize(all.right() + 1, all.bottom() + 1);
        return field;
    }

    void join(QWidget* view, CellGroup*& cells) {
        auto* cell = qobject_cast<CellView*>(view);
        if (!cell || cell->focusPolicy() == Qt::NoFocus) return;
        if (!cells) cells = new CellGroup(container_);
        cells->add(*cell);
    }

    // A label's access key goes to the control after it.
    void giveAccessKey(const ui::Widget& model, QWidget* view) {
        if (waiting_ && view->focusPolicy() != Qt::NoFocus) {
            waiting_->setBuddy(view);
            waiting_ = nullptr;
        }
        const auto* label = dynamic_cast<const ui::Label*>(&model);
        if (label && label->usesMnemonic() && label->caption().find('&') != std::string::npos)
            waiting_ = qobject_cast<QLabel*>(view);
    }

    static void letShrink(QWidget* view) {
        if (auto* label = dynamic_cast<ElidedLabel*>(view)) label->setShrinks(true);
    }

    QWidget* container_;
    QLabel* waiting_ = nullptr;
};

}  // namespace

void buildLayout(QWidget& container, const ui::Layout& layout) {
    Builder builder(container);
    auto built = builder.build(layout);
    built->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    container.setLayout(built.release());
}

}  // namespace dravik::qt
