#include "qt/PictureIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <algorithm>

#include "qt/Theme.h"

namespace dravik::qt {
namespace {

constexpr double kPictureSide = 16.0;
constexpr double kDisabledOpacity = 0.4;

class PictureIconEngine : public QIconEngine {
  public:
    explicit PictureIconEngine(ui::Picture picture) : picture_(std::move(picture)) {}

    QIconEngine* clone() const override { return new PictureIconEngine(picture_); }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return result;
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled) painter->setOpacity(kDisabledOpacity);
        const double scale = std::min(rect.width(), rect.height()) / kPictureSide;
        painter->translate(QRectF(rect).center());
        painter->scale(scale, scale);
        painter->translate(-kPictureSide / 2, -kPictureSide / 2);
        for (const auto& shape : picture_) paintShape(*painter, shape);
        painter->restore();
    }

  private:
    static void paintShape(QPainter& painter, const ui::PictureShape& shape) {
        const QColor color = qtColor(shape.color, QGuiApplication::palette());
        QPen pen(color, shape.strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(shape.strokeWidth > 0 ? pen : QPen(Qt::NoPen));
        painter.setBrush(shape.filled ? QBrush(color) : QBrush(Qt::NoBrush));
        QPolygonF polygon;
        for (const auto& point : shape.points) polygon << QPointF(point.x, point.y);
        switch (shape.kind) {
            case ui::PictureShape::Kind::Polyline:
                painter.drawPolyline(polygon);
                break;
            case ui::PictureShape::Kind::Polygon:
                painter.drawPolygon(polygon);
                break;
            case ui::PictureShape::Kind::Ellipse:
                painter.drawEllipse(polygon.boundingRect());
                break;
        }
    }

    ui::Picture picture_;
};

}  // namespace

QIcon pictureIcon(const ui::Picture& picture) {
    return QIcon(new PictureIconEngine(picture));
}

}  // namespace dravik::qt
