#include "qt/Theme.h"

#include <QApplication>
#include <QPointer>
#include <QStyle>
#include <cmath>
#include <memory>
#include <utility>

#include "qt/DesktopColors.h"
#include "qt/FieldFrameStyle.h"

namespace dravik::qt {

using trainer::Theme;

namespace {

double luminance(const QColor& color) {
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
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

QColor blend(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * share)); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

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

namespace {

QPalette paletteOf(bool dark) {
    return dark ? makePalette({0x38, 0x3A, 0x3F}, {0x25, 0x27, 0x2A}, {0x4B, 0x4E, 0x54}, {0xE8, 0xE8, 0xE8},
                              {0x4C, 0x8D, 0xF0})
                : makePalette({0xF2, 0xF2, 0xF2}, {0xFF, 0xFF, 0xFF}, {0xF5, 0xF5, 0xF5}, {0x1C, 0x1C, 0x1C},
                              {0x2A, 0x6F, 0xD1});
}

// What is wanted, and what the desktop says meanwhile.
class Themes {
  public:
    void use(Theme theme) {
        theme_ = theme;
        show();
    }

  private:
    void show() {
        const bool own = theme_ != Theme::System || desktopIsDark_;
        if (own || plainStyle_)
            QApplication::setStyle(new FieldFrameStyle);
        else
            QApplication::setStyle(styleOfSystem_);
        QApplication::setPalette(own ? paletteOf(theme_ != Theme::Light) : QPalette());
    }

    Theme theme_ = Theme::System;
    const QString styleOfSystem_ = QApplication::style()->name();
    const bool plainStyle_ = styleOfSystem_.compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
    // A platform's own palette is dark by itself then.
    const bool systemIsDark_ = luminance(QApplication::palette().color(QPalette::Window)) < 0.3;
    bool desktopIsDark_ = false;
    const DesktopColors desktop_{[this](bool dark) {
        if (std::exchange(desktopIsDark_, dark && !systemIsDark_) != desktopIsDark_) show();
    }};
};

}  // namespace

void useTheme(Theme theme) {
    // Of the application, which ends before static objects do.
    static QPointer<QObject> owner;
    static std::unique_ptr<Themes> themes;
    if (!owner) {
        owner = new QObject(QCoreApplication::instance());
        themes = std::make_unique<Themes>();
        QObject::connect(owner, &QObject::destroyed, [] { themes.reset(); });
    }
    themes->use(theme);
}

}  // namespace dravik::qt
