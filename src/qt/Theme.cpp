#include "qt/Theme.h"

#include <QApplication>
#include <QStyleFactory>
#include <cmath>

namespace dravik::qt {
namespace {

double luminance(const QColor& color) {
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor blend(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * share)); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

QPalette makePalette(QColor window, QColor base, QColor button, QColor text, QColor accent) {
    QPalette palette(button, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, blend(base, text, 0.05));
    palette.setColor(QPalette::ToolTipBase, blend(base, accent, 0.12));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, blend(base, text, 0.5));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, readableOn(accent));
    palette.setColor(QPalette::Link, accent);
    const QColor faint = blend(window, text, 0.45);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, blend(window, text, 0.3));
    return palette;
}

}  // namespace

QColor qtColor(ui::Color color, const QPalette& palette) {
    if (!ui::isSystemColor(color)) return QColor(ui::redOf(color), ui::greenOf(color), ui::blueOf(color));
    switch (color) {
        case ui::kScrollBarColor:
            return blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.2);
        case ui::kWindowColor:
            return palette.color(QPalette::Base);
        case ui::kWindowTextColor:
            return palette.color(QPalette::WindowText);
        case ui::kButtonTextColor:
            return palette.color(QPalette::ButtonText);
        default:
            return palette.color(QPalette::Window);
    }
}

double contrast(const QColor& a, const QColor& b) {
    const double x = luminance(a) + 0.05;
    const double y = luminance(b) + 0.05;
    return x > y ? x / y : y / x;
}

QColor readableOn(const QColor& background) {
    return contrast(background, Qt::white) > contrast(background, Qt::black) ? Qt::white : Qt::black;
}

QColor textColorOn(ui::Color background, ui::Color foreground, const QPalette& palette) {
    if (ui::isSystemColor(foreground) && !ui::isSystemColor(background))
        return readableOn(qtColor(background, palette));
    return qtColor(foreground, palette);
}

QColor warningColor(const QPalette& palette) {
    const bool light = luminance(palette.color(QPalette::Window)) > 0.3;
    return qtColor(light ? ui::kWarningColor : ui::kWarningColorOnDark, palette);
}

void useTheme(Theme theme) {
    if (theme == Theme::System) return;
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(theme == Theme::Dark
                                 ? makePalette({0x38, 0x3A, 0x3F}, {0x25, 0x27, 0x2A}, {0x4B, 0x4E, 0x54},
                                               {0xE8, 0xE8, 0xE8}, {0x35, 0x74, 0xD0})
                                 : makePalette({0xF2, 0xF2, 0xF2}, {0xFF, 0xFF, 0xFF}, {0xF5, 0xF5, 0xF5},
                                               {0x1C, 0x1C, 0x1C}, {0x2A, 0x6F, 0xD1}));
}

}  // namespace dravik::qt
