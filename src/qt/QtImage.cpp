#include "qt/QtImage.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <algorithm>

#include "base/Failure.h"
#include "engine/image/Thumbnail.h"
#include "qt/QtConversions.h"

namespace dravik::qt {
namespace {

// Room for kMostPixels of 16-bit colour.
constexpr int kAllocationMegabytes = 1024;
// Converted at once: a large image stands in memory as it was decoded and in grey, and no third time.
constexpr int kStripeRows = 64;

std::string problem(const std::string& path, const QString& what) {
    return utf8(QFileInfo(qtText(path)).fileName()) + ": " + utf8(what);
}

QString tooLarge(const QSize& size) {
    return QStringLiteral("the image of %1 x %2 pixels is larger than 64 megapixels")
        .arg(size.width())
        .arg(size.height());
}

bool isTooLarge(const QSize& size) {
    return static_cast<std::int64_t>(size.width()) * size.height() > engine::kMostPixels;
}

QImage onWhite(const QImage& image) {
    QImage result(image.size(), QImage::Format_RGB32);
    result.fill(Qt::white);
    QPainter painter(&result);
    painter.drawImage(0, 0, image);
    return result;
}

}  // namespace

engine::GreyImage decodeImageFile(const std::string& path) {
    const QFileInfo file(qtText(path));
    if (!file.exists())
        throw Failure(RuntimeError::FileNotFound, problem(path, QStringLiteral("file not found")));
    if (file.isDir())
        throw Failure(RuntimeError::PathFileAccessError, problem(path, QStringLiteral("is a folder")));
    // Opening a pipe or a device would wait, for ever if need be.
    if (!file.isFile())
        throw Failure(RuntimeError::PathFileAccessError, problem(path, QStringLiteral("is no file")));
    if (!file.isReadable())
        throw Failure(RuntimeError::PermissionDenied, problem(path, QStringLiteral("may not be read")));

    QImageReader reader(file.filePath());
    QImageReader::setAllocationLimit(kAllocationMegabytes);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    if (!reader.canRead())
        throw Failure(RuntimeError::InvalidProcedureCall,
                      problem(path, QStringLiteral("not an image that can be read")));
    if (reader.size().isValid() && isTooLarge(reader.size()))
        throw Failure(RuntimeError::OutOfMemory, problem(path, tooLarge(reader.size())));
    const QImage image = reader.read();
    if (image.isNull())
        throw Failure(RuntimeError::DeviceIoError,
                      problem(path, QStringLiteral("damaged (%1)").arg(reader.errorString())));
    if (isTooLarge(image.size()))
        throw Failure(RuntimeError::OutOfMemory, problem(path, tooLarge(image.size())));

    engine::GreyImage grey(image.width(), image.height());
    for (int top = 0; top < image.height(); top += kStripeRows) {
        QImage stripe = image.copy(0, top, image.width(), std::min(kStripeRows, image.height() - top));
        if (stripe.hasAlphaChannel()) stripe = onWhite(stripe);
        stripe = stripe.convertToFormat(QImage::Format_Grayscale8);
        if (stripe.isNull())
            throw Failure(RuntimeError::OutOfMemory, problem(path, QStringLiteral("out of memory")));
        for (int y = 0; y < stripe.height(); ++y)
            std::copy_n(stripe.constScanLine(y), stripe.width(), grey.row(top + y).begin());
    }
    return grey;
}

QImage toQImage(const engine::GreyImage& image) {
    QImage result(image.width(), image.height(), QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) std::ranges::copy(image.row(y), result.scanLine(y));
    return result;
}

// Whole pixels are averaged first, many times as fast as Qt does all of it.
QImage shrunk(const engine::GreyImage& image, QSize size) {
    const int factor = std::min(image.width() / size.width(), image.height() / size.height());
    return (factor > 1 ? toQImage(engine::reduced(image, factor)) : toQImage(image))
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace dravik::qt
