#include "qt/ThumbnailStrip.h"

#include <QAbstractListModel>
#include <QCache>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>
#include <memory>
#include <vector>

#include "qt/Guard.h"
#include "qt/QtConversions.h"
#include "qt/QtImage.h"

namespace dravik::qt {

constexpr QSize kThumbnail(104, 54);
constexpr QSize kItem(116, 82);
constexpr int kKeptThumbnails = 400;
// Asked for but no longer in view: the newest requests are the ones that the operator looks at.
constexpr std::size_t kMostWaiting = 40;

class ThumbnailModel : public QAbstractListModel {
  public:
    ThumbnailModel(const trainer::OpenedParts& parts, QObject* parent)
        : QAbstractListModel(parent), parts_(parts), ratio_(1), thumbnails_(kKeptThumbnails) {
        next_.setSingleShot(true);
        connect(&next_, &QTimer::timeout, this, [this] { decodeOne(); });
    }

    void setPixelRatio(double ratio) { ratio_ = ratio; }

    void refill() {
        beginResetModel();
        waiting_.clear();
        endResetModel();
    }

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : parts_.count(); }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || index.row() >= parts_.count()) return {};
        QVariant result;
        guarded([&] {
            if (role == Qt::DisplayRole)
                result = qtText(parts_.name(index.row()));
            else if (role == Qt::ToolTipRole)
                result = qtText(parts_.path(index.row()));
            else if (role == Qt::DecorationRole)
                result = thumbnail(index.row());
            else if (role == Qt::SizeHintRole)
                result = kItem;
        });
        return result;
    }

  private:
    QVariant thumbnail(int row) const {
        const QString path = qtText(parts_.path(row));
        if (const QPixmap* pixmap = thumbnails_.object(path)) return *pixmap;
        if (std::find(waiting_.begin(), waiting_.end(), row) == waiting_.end()) waiting_.push_back(row);
        if (waiting_.size() > kMostWaiting) waiting_.erase(waiting_.begin());
        next_.start(0);
        return emptyThumbnail();
    }

    QPixmap emptyThumbnail() const {
        QPixmap pixmap(kThumbnail * ratio_);
        pixmap.setDevicePixelRatio(ratio_);
        pixmap.fill(Qt::transparent);
        return pixmap;
    }

    void decodeOne() {
        if (waiting_.empty()) return;
        const int row = waiting_.front();
        waiting_.erase(waiting_.begin());
        if (row < parts_.count()) guarded([&] { decode(row); });
        if (!waiting_.empty()) next_.start(0);
    }

    void decode(int row) {
        const engine::GreyImage image = parts_.thumbnail(row, static_cast<int>(kThumbnail.width() * ratio_));
        auto pixmap = std::make_unique<QPixmap>(emptyThumbnail());
        QPainter painter(pixmap.get());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (image.empty()) {
            painter.setPen(QGuiApplication::palette().color(QPalette::Text));
            painter.drawText(QRect(QPoint(0, 0), kThumbnail), static_cast<int>(Qt::AlignCenter),
                             QStringLiteral("?"));
        } else {
            QRect place(QPoint(0, 0),
                        QSize(image.width(), image.height()).scaled(kThumbnail, Qt::KeepAspectRatio));
            place.moveCenter(QRect(QPoint(0, 0), kThumbnail).center());
            painter.drawImage(place, toQImage(image));
        }
        painter.end();
        thumbnails_.insert(qtText(parts_.path(row)), pixmap.release());
        Q_EMIT dataChanged(index(row), index(row), {Qt::DecorationRole});
    }

    const trainer::OpenedParts& parts_;
    double ratio_;
    QCache<QString, QPixmap> thumbnails_;
    mutable std::vector<int> waiting_;
    mutable QTimer next_;
};

ThumbnailStrip::ThumbnailStrip(trainer::OpenedParts& parts, QWidget* parent)
    : QListView(parent), parts_(parts), model_(new ThumbnailModel(parts, this)) {
    setAccessibleName(QStringLiteral("Opened images"));
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideMiddle);
    setIconSize(kThumbnail);
    setGridSize(kItem);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    model_->setPixelRatio(devicePixelRatioF());
    setModel(model_);
    listChanged_ = parts.listChanged.connect([this] {
        showing_ = true;
        model_->refill();
        showing_ = false;
        showCurrent();
    });
    currentChanged_ = parts.currentChanged.connect([this] { showCurrent(); });
    showCurrent();
}

QSize ThumbnailStrip::sizeHint() const {
    return {400, gridSize().height() + horizontalScrollBar()->sizeHint().height() + 2 * frameWidth() + 2};
}

void ThumbnailStrip::showCurrent() {
    showing_ = true;
    const QModelIndex index = model_->index(parts_.current());
    setCurrentIndex(index);
    if (index.isValid()) scrollTo(index);
    showing_ = false;
}

void ThumbnailStrip::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QListView::currentChanged(current, previous);
    if (!showing_ && current.isValid() && current.row() != parts_.current())
        guarded([&] { parts_.setCurrent(current.row()); });
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

}  // namespace dravik::qt
