#include "qt/ThumbnailStrip.h"

#include <QAbstractListModel>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QWheelEvent>

#include "qt/Guard.h"
#include "qt/PictureIcon.h"
#include "qt/QtConversions.h"
#include "qt/QtImage.h"

namespace dravik::qt {
namespace {

using trainer::PartStrip;

constexpr QSize kPicture(PartStrip::kPictureWidth, PartStrip::kPictureHeight);
constexpr QSize kItem(PartStrip::kItemWidth, PartStrip::kItemHeight);

class StripModel : public QAbstractListModel {
  public:
    StripModel(const PartStrip& strip, QWidget& view)
        : QAbstractListModel(&view), strip_(strip), view_(view) {}

    void refill() {
        beginResetModel();
        endResetModel();
    }

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : strip_.count(); }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || index.row() >= strip_.count()) return {};
        QVariant result;
        guarded([&] {
            if (role == Qt::DisplayRole)
                result = qtText(strip_.name(index.row()));
            else if (role == Qt::ToolTipRole)
                result = qtText(strip_.tip(index.row()));
            else if (role == Qt::AccessibleTextRole)
                result = qtText(strip_.description(index.row()));
            else if (role == Qt::DecorationRole)
                result = pixmap(strip_.picture(index.row()), strip_.mark(index.row()));
            else if (role == Qt::SizeHintRole)
                result = kItem;
        });
        return result;
    }

  private:
    QPixmap pixmap(const engine::GreyImage* picture, const trainer::PartMark& mark) const {
        const double ratio = view_.devicePixelRatioF();
        QPixmap pixmap(kPicture * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (picture) paint(painter, *picture);
        if (!mark.picture.empty())
            pictureIcon(mark.picture)
                .paint(&painter, PartStrip::kPictureWidth - PartStrip::kMarkSide, 0, PartStrip::kMarkSide,
                       PartStrip::kMarkSide);
        return pixmap;
    }

    static void paint(QPainter& painter, const engine::GreyImage& picture) {
        if (picture.empty()) {
            painter.setPen(QGuiApplication::palette().color(QPalette::Text));
            painter.drawText(QRect(QPoint(0, 0), kPicture), static_cast<int>(Qt::AlignCenter),
                             QStringLiteral("?"));
        } else {
            painter.drawImage(
                qtRect(PartStrip::pictureIn(picture, PartStrip::kPictureWidth, PartStrip::kPictureHeight)),
                toQImage(picture));
        }
    }

    const PartStrip& strip_;
    const QWidget& view_;
};

}  // namespace

ThumbnailStrip::ThumbnailStrip(PartStrip& strip, QWidget* parent) : QListView(parent), strip_(strip) {
    setAccessibleName(QString::fromUtf8(trainer::kStripName));
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideMiddle);
    setIconSize(kPicture);
    setGridSize(kItem);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    auto* model = new StripModel(strip, *this);
    setModel(model);
    strip.setDisplay({1, devicePixelRatioF()});
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this,
            [this](int position) { strip_.scrollTo(position); });
    connections_.push_back(strip.listChanged.connect([this, model] {
        showing_ = true;
        model->refill();
        showing_ = false;
    }));
    connections_.push_back(strip.changed.connect([this] { showCurrent(); }));
    showCurrent();
}

QSize ThumbnailStrip::sizeHint() const {
    return {400, gridSize().height() + horizontalScrollBar()->sizeHint().height() + 2 * frameWidth() + 2};
}

QSize ThumbnailStrip::minimumSizeHint() const {
    return {120, sizeHint().height() - PartStrip::kItemHeight + PartStrip::kLeastHeight};
}

void ThumbnailStrip::showCurrent() {
    showing_ = true;
    if (const QModelIndex index = model()->index(strip_.current(), 0); index != currentIndex())
        setCurrentIndex(index);
    executeDelayedItemsLayout();
    horizontalScrollBar()->setValue(strip_.scroll().position);
    showing_ = false;
    viewport()->update();
}

void ThumbnailStrip::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (!showing_ && current.isValid()) guarded([&] { strip_.choose(current.row()); });
}

void ThumbnailStrip::keyPressEvent(QKeyEvent* event) {
    // The page keys go from part to part in this window.
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        event->ignore();
    else
        QListView::keyPressEvent(event);
}

void ThumbnailStrip::wheelEvent(QWheelEvent* event) {
    const int delta = event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - delta);
    event->accept();
}

void ThumbnailStrip::resizeEvent(QResizeEvent* event) {
    QListView::resizeEvent(event);
    strip_.setWidth(viewport()->width());
}

}  // namespace dravik::qt
