#include "desktop/LayoutBuilder.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <memory>

#include "desktop/CellView.h"
#include "desktop/ElidedLabel.h"
#include "desktop/Peers.h"
#include "desktop/QtConversions.h"

namespace dravik {
namespace {

constexpr int kSpacing = 6;
constexpr int kMargin = 9;

class Builder {
  public:
    explicit Builder(QWidget& container) : container_(&container) {}

    std::unique_ptr<QLayout> build(const Layout& layout) {
        switch (layout.kind) {
            case Layout::Kind::Row:
                return box(layout, QBoxLayout::LeftToRight);
            case Layout::Kind::Table:
                return table(layout);
            case Layout::Kind::Column:
                return box(layout, QBoxLayout::TopToBottom);
            default: {
                Layout alone;
                alone.children.push_back(layout);
                alone.children.back().stretch = 1;
                return box(alone, QBoxLayout::TopToBottom);
            }
        }
    }

  private:
    static bool isGroup(const Layout& layout) {
        return layout.kind == Layout::Kind::Row || layout.kind == Layout::Kind::Column ||
               layout.kind == Layout::Kind::Table;
    }

    std::unique_ptr<QLayout> box(const Layout& layout, QBoxLayout::Direction direction) {
        auto result = std::make_unique<QBoxLayout>(direction);
        result->setSpacing(kSpacing);
        CellGroup* cells = nullptr;
        for (const auto& child : layout.children) {
            if (child.kind == Layout::Kind::Empty) {
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

    std::unique_ptr<QLayout> table(const Layout& layout) {
        auto result = std::make_unique<QGridLayout>();
        result->setSpacing(kSpacing);
        CellGroup* cells = nullptr;
        for (const auto& child : layout.children) {
            if (child.kind == Layout::Kind::Empty) continue;
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
    QWidget* place(const Layout& child, CellGroup*& cells) {
        QWidget* view = nullptr;
        if (child.kind == Layout::Kind::Widget) {
            view = makeView(*child.widget, container_);
            join(view, cells);
            giveAccessKey(*child.widget, view);
        } else if (child.kind == Layout::Kind::Fixed) {
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

    QWidget* fixed(const Layout& layout) {
        auto* field = new QWidget(container_);
        Builder inside(*field);
        CellGroup* cells = nullptr;
        QRect all;
        for (const auto& child : layout.children) {
            QWidget* view = inside.place(child, cells);
            const Place& place = child.place;
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
    void giveAccessKey(const Widget& model, QWidget* view) {
        if (waiting_ && view->focusPolicy() != Qt::NoFocus) {
            waiting_->setBuddy(view);
            waiting_ = nullptr;
        }
        const auto* label = dynamic_cast<const Label*>(&model);
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

void buildLayout(QWidget& container, const Layout& layout) {
    Builder builder(container);
    auto built = builder.build(layout);
    built->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    container.setLayout(built.release());
}

}  // namespace dravik
