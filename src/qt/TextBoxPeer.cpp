#include <QLineEdit>
#include <QStyle>
#include <algorithm>

#include "qt/Peer.h"
#include "qt/Peers.h"
#include "qt/QtConversions.h"
#include "qt/Theme.h"

namespace dravik::qt {
namespace {

// A locked box in the colour of its form is a caption or a result: it has no frame and is as wide as its
// text.
class LineEdit : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

    void setFlat(bool flat) {
        flat_ = flat;
        setFrame(!flat);
        setFocusPolicy(flat ? Qt::ClickFocus : Qt::StrongFocus);
        setSizePolicy(flat ? QSizePolicy::Preferred : QSizePolicy::Expanding, QSizePolicy::Fixed);
        updateGeometry();
    }
    QSize sizeHint() const override { return flat_ ? textSize() : QLineEdit::sizeHint(); }
    QSize minimumSizeHint() const override { return flat_ ? textSize() : QLineEdit::minimumSizeHint(); }

  private:
    QSize textSize() const {
        constexpr int kMargin = 8;
        return {fontMetrics().horizontalAdvance(text()) + kMargin, QLineEdit::sizeHint().height()};
    }

    bool flat_ = false;
};

class TextBoxPeer : public PeerOf<ui::TextBox, LineEdit> {
  public:
    TextBoxPeer(ui::TextBox& model, LineEdit& view) : PeerOf(model, view) {
        view.setAcceptDrops(false);  // a dropped file is for the window, not its name for the box
        connect(&view, &QLineEdit::textEdited, this,
                [this](const QString& text) { act([&] { edited(utf8(text)); }); });
    }

  protected:
    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Caption: {
                const QString text = qtText(model_.text());
                if (view_.text() == text) break;
                const int cursor = view_.cursorPosition();
                const bool atEnd = cursor == view_.text().size();
                view_.setText(text);
                if (!atEnd) view_.setCursorPosition(cursor);
                if (!view_.hasFocus()) view_.setCursorPosition(0);
                view_.updateGeometry();
                break;
            }
            case ui::Change::Selection: {
                const qsizetype start = positionOfCharacter(view_.text(), model_.selectionStart());
                const qsizetype end =
                    positionOfCharacter(view_.text(), model_.selectionStart() + model_.selectionLength());
                view_.setSelection(static_cast<int>(start), static_cast<int>(end - start));
                break;
            }
            case ui::Change::Enabled:
                view_.setReadOnly(model_.locked());
                Peer::show(change);
                showColors();
                break;
            case ui::Change::Appearance:
                Peer::show(change);
                showColors();
                break;
            default:
                Peer::show(change);
        }
    }

  private:
    // What the model has made of it stands behind what was pasted.
    void edited(const std::string& text) {
        const qsizetype behind = view_.text().size() - view_.cursorPosition();
        model_.edit(text);
        if (model_.text() == text) return;
        show(ui::Change::Caption);
        view_.setCursorPosition(static_cast<int>(std::max<qsizetype>(view_.text().size() - behind, 0)));
    }

    void showColors() {
        const bool flat = model_.locked() && model_.backColor() == ui::kButtonFaceColor;
        view_.setFlat(flat);
        QPalette palette;
        if (flat) palette.setBrush(QPalette::Base, Qt::transparent);
        if (!ui::isSystemColor(model_.backColor()))
            palette.setColor(QPalette::Base, qtColor(model_.backColor(), palette));
        if (!ui::isSystemColor(model_.backColor()) || !ui::isSystemColor(model_.foreColor()))
            palette.setColor(QPalette::Text, textColorOn(model_.backColor(), model_.foreColor(), palette));
        view_.setPalette(palette);
    }
};

}  // namespace

QWidget* make(ui::TextBox& model, QWidget* parent) {
    return viewWith<TextBoxPeer>(model, parent);
}

}  // namespace dravik::qt
