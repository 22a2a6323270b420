#include <QAccessible>
#include <QHBoxLayout>
#include <vector>

#include "qt/ElidedLabel.h"
#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

// Each panel is a label named "bar.key".
class StatusBarPeer : public PeerOf<ui::StatusBar, QWidget> {
  public:
    StatusBarPeer(ui::StatusBar& model, QWidget& view) : PeerOf(model, view), row_(new QHBoxLayout(&view)) {
        row_->setContentsMargins(0, 0, 0, 0);
        row_->setSpacing(3);
        view.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

  protected:
    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Items:
                addPanels();
                [[fallthrough]];
            case ui::Change::Caption:
                for (std::size_t i = 0; i < labels_.size(); ++i) showText(*labels_[i], *model_.panels()[i]);
                break;
            case ui::Change::ToolTip:
                Peer::show(change);
                for (std::size_t i = 0; i < labels_.size(); ++i)
                    labels_[i]->setOwnToolTip(qtText(model_.panels()[i]->toolTip()));
                break;
            default:
                Peer::show(change);
        }
    }

  private:
    void addPanels() {
        while (labels_.size() < model_.panels().size()) {
            const ui::StatusPanel& panel = *model_.panels()[labels_.size()];
            auto* label = new ElidedLabel(&view_);
            label->setObjectName(qtText(model_.name() + "." + panel.key));
            label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
            label->setMargin(2);
            label->setShrinks(true);
            label->setMinimumWidth(pixels(panel.width));
            // A long text must not take the room of the panel that stretches.
            if (!panel.stretches) label->setMaximumWidth(pixels(panel.width) * 3 / 2);
            label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
            row_->addWidget(label, panel.stretches ? 1 : 0);
            labels_.push_back(label);
        }
    }

    static void showText(ElidedLabel& label, const ui::StatusPanel& panel) {
        const QString text = qtText(panel.text()).replace(QLatin1Char('\r'), QLatin1Char(' '));
        if (label.text() == text) return;
        label.setText(text);
        QAccessibleEvent changed(&label, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&changed);
    }

    QHBoxLayout* row_;
    std::vector<ElidedLabel*> labels_;
};

}  // namespace

QWidget* makeStatusBar(ui::StatusBar& model, QWidget* parent) {
    auto* view = new QWidget(parent);
    (new StatusBarPeer(model, *view))->start();
    return view;
}

}  // namespace dravik::qt
