#include "platform/toolkit/views/ImageView.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

namespace tljira {

namespace {

constexpr qsizetype mostBytes = 4 * 1024 * 1024;
constexpr QSize largestSize(4096, 4096);
/// A progressive JPEG is made of scans, each of which costs as much as the whole picture and may have hardly a byte.
/// Programs make about ten.
constexpr qsizetype mostScans = 64;

/// Formats that need no more than the size of the picture, and open no other file.
bool isFormatTaken(const QByteArray& format)
{
    static const QByteArrayList taken = {"png", "jpeg", "jpg", "gif", "bmp", "webp"};
    return taken.contains(format);
}

bool isWithin(const QSize& size, const QSize& limit)
{
    return size.isValid() && size.boundedTo(limit) == size;
}

bool isTaken(const QByteArray& bytes, const QImageReader& reader)
{
    const QByteArray format = reader.format();
    if (!isFormatTaken(format) || !isWithin(reader.size(), largestSize))
        return false;
    // The marker of a scan; within a scan's data no byte 0xff is followed by this one.
    return !format.startsWith("jp") || bytes.count("\xff\xda") <= mostScans;
}

} // namespace

ImageView::ImageView(QWidget* parent)
    : QWidget(parent)
{
}

void ImageView::setImage(const QImage& image)
{
    m_image = image;
    m_scaled = QPixmap();
    update();
}

QImage ImageView::decode(const QByteArray& bytes, int side)
{
    if (bytes.size() > mostBytes)
        return {};
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    if (!isTaken(bytes, reader))
        return {};
    const QSize limit(side, side);
    if (!isWithin(reader.size(), limit))
        reader.setScaledSize(reader.size().scaled(limit, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    const QImage image = reader.read();
    if (image.isNull() || isWithin(image.size(), limit))
        return image;
    return image.scaled(limit, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

void ImageView::paintEvent(QPaintEvent*)
{
    if (m_image.isNull())
        return;
    const double ratio = devicePixelRatioF();
    const QSize size = m_image.size().scaled((QSizeF(contentsRect().size()) * ratio).toSize(), Qt::KeepAspectRatio);
    if (size.isEmpty())
        return;
    if (m_scaled.size() != size || m_scaled.devicePixelRatio() != ratio) {
        m_scaled = QPixmap::fromImage(m_image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        m_scaled.setDevicePixelRatio(ratio);
    }
    QRectF target(QPointF(), QSizeF(size) / ratio);
    target.moveCenter(QRectF(contentsRect()).center());
    QPainter painter(this);
    painter.drawPixmap(target.topLeft(), m_scaled);
}

} // namespace tljira
