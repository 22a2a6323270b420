#include "qt/ReadingView.h"

#include <QEvent>
#include <QFontDatabase>
#include <QTextCursor>

#include "qt/QtConversions.h"
#include "qt/Theme.h"

namespace dravik::qt {

constexpr double kTextScale = 1.5;

ReadingView::ReadingView(trainer::ReadingModel& model, QWidget* parent) : QTextEdit(parent), model_(model) {
    setReadOnly(true);
    setAcceptDrops(false);
    setTabChangesFocus(true);
    setLineWrapMode(QTextEdit::NoWrap);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QString::fromUtf8(trainer::kReadingName));
    changed_ = model.changed.connect([this] { showReading(); });
    showReading();
}

void ReadingView::showReading() {
    clear();
    QTextCursor cursor(document());
    QTextCharFormat format;
    if (model_.lines().empty()) {
        format.setForeground(palette().color(QPalette::PlaceholderText));
        cursor.insertText(qtText(model_.note()), format);
    }
    for (const auto& line : model_.lines()) {
        if (&line != &model_.lines().front()) cursor.insertBlock();
        for (const trainer::ReadingSpan& span : line) {
            format = {};
            format.setFont(textFont());
            format.setToolTip(qtText(span.tip));
            if (span.weak) {
                format.setForeground(warningColor(palette()));
                format.setUnderlineColor(warningColor(palette()));
                format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
            }
            cursor.insertText(qtText(span.text), format);
        }
    }
    setAccessibleDescription(qtText(model_.description()));
    moveCursor(QTextCursor::Start);
    updateGeometry();
}

QFont ReadingView::textFont() const {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(this->font().pointSizeF() * kTextScale);
    return font;
}

int ReadingView::heightOf(int lines) const {
    return lines * QFontMetrics(textFont()).lineSpacing() +
           static_cast<int>(2 * document()->documentMargin()) + 2 * frameWidth() + 2;
}

QSize ReadingView::sizeHint() const {
    return {300, heightOf(model_.shownLines())};
}

QSize ReadingView::minimumSizeHint() const {
    return {120, heightOf(1)};
}

void ReadingView::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) showReading();
}

}  // namespace dravik::qt
