// Qt's own plain style with frames around boxes, fields and buttons that are seen on any palette: three to
// one against what they stand on and against what is inside.
#pragma once

#include <QProxyStyle>

namespace dravik::qt {

class FieldFrameStyle : public QProxyStyle {
  public:
    FieldFrameStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

// Of the frame of a field.
QColor fieldFrameColor(const QPalette& palette);

}  // namespace dravik::qt
