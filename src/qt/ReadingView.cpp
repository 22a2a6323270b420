#include "qt/ReadingView.h"

#include <QEvent>
#include <QFontDatabase>
#include <QTextCursor>
#include <algorithm>
#include <cmath>

#include "qt/QtConversions.h"
#include "qt/Theme.h"

namespace dravik::qt {

constexpr int kMostLinesAtOnce = 3;
constexpr double kTextScale = 1.5;

ReadingView::ReadingView(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setAcceptDrops(false);
    setTabChangesFocus(true);
    setLineWrapMode(QTextEdit::NoWrap);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Text read in the image"));
}

void ReadingView::setReading(const trainer::Reading& reading) {
    reading_ = reading;
    showReading();
    updateGeometry();
}

void ReadingView::showReading() {
    clear();
    QTextCursor cursor(document());
    if (!reading_.available || reading_.lines.empty()) {
        QTextCharFormat format;
        format.setForeground(palette().color(QPalette::PlaceholderText));
        cursor.insertText(qtText(reading_.note), format);
        return;
    }
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(this->font().pointSizeF() * kTextScale);
    bool first = true;
    int weakCharacters = 0;
    for (const auto& line : reading_.lines) {
        if (!first) cursor.insertBlock();
        first = false;
        for (const auto& character : line) {
            const long percent = std::lround(character.confidence * 100);
            const bool weak = character.confidence < trainer::kWeakConfidence;
            QTextCharFormat format;
            format.setFont(font);
            const auto shown = engine::shownCharacter(character);
            format.setToolTip(QStringLiteral("%1: %2 % sure%3")
                                  .arg(qtText(character.character))
                                  .arg(percent)
                                  .arg(shown != character.character ? QStringLiteral(" (not taken)")
                                       : weak                       ? QStringLiteral(" (weak)")
                                                                    : QString()));
            if (weak) {
                ++weakCharacters;
                format.setForeground(warningColor(palette()));
                format.setUnderlineColor(warningColor(palette()));
                format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
            }
            cursor.insertText(qtText(shown), format);
        }
    }
    setAccessibleDescription(weakCharacters == 0 ? QStringLiteral("No weak characters")
                                                 : QStringLiteral("%1 weak characters").arg(weakCharacters));
    moveCursor(QTextCursor::Start);
}

int ReadingView::heightOf(int lines) const {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(this->font().pointSizeF() * kTextScale);
    return lines * QFontMetrics(font).lineSpacing() + static_cast<int>(2 * document()->documentMargin()) +
           2 * frameWidth() + 2;
}

QSize ReadingView::sizeHint() const {
    return {300, heightOf(std::clamp(static_cast<int>(reading_.lines.size()), 1, kMostLinesAtOnce))};
}

QSize ReadingView::minimumSizeHint() const {
    return {120, heightOf(1)};
}

void ReadingView::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) showReading();
}

}  // namespace dravik::qt
