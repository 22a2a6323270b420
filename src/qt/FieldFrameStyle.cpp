#include "qt/FieldFrameStyle.h"

#include <QPainter>
#include <QStyleOption>
#include <cmath>

#include "qt/Theme.h"

namespace dravik::qt {
namespace {

constexpr double kLeastContrast = 3.1;  // what rounding takes included
constexpr double kCorner = 2;

void frame(QPainter& painter, const QStyleOption& option, const QRect& place, bool round) {
    // The style marks the field that has the focus, and what is switched off need not stand out.
    if (!(option.state & QStyle::State_Enabled)) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const bool focused = option.state & QStyle::State_HasFocus && option.type != QStyleOption::SO_Button;
    painter.setPen(
        QPen(focused ? option.palette.color(QPalette::Highlight) : fieldFrameColor(option.palette), 1));
    const QRectF lines = QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5);
    if (round)
        painter.drawEllipse(lines);
    else
        painter.drawRoundedRect(lines, kCorner, kCorner);
    painter.restore();
}

}  // namespace

QColor fieldFrameColor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor inside = palette.color(QPalette::Active, QPalette::Base);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    constexpr int kShades = 64;
    for (int shade = 1; shade < kShades; ++shade) {
        const QColor color = blend(window, text, double(shade) / kShades);
        if (contrast(color, window) >= kLeastContrast && contrast(color, inside) >= kLeastContrast)
            return color;
    }
    return text;
}

FieldFrameStyle::FieldFrameStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void FieldFrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                    const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
        case PE_FrameLineEdit:
        case PE_Frame:
        case PE_IndicatorCheckBox:
        case PE_PanelButtonCommand:
            return frame(*painter, *option, option->rect, false);
        case PE_IndicatorRadioButton:
            return frame(*painter, *option, option->rect, true);
        default:
            return;
    }
}

void FieldFrameStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                         QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox) frame(*painter, *option, option->rect, false);
}

void FieldFrameStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_ProgressBarGroove) frame(*painter, *option, option->rect, false);
}

}  // namespace dravik::qt
