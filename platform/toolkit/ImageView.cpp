#include "platform/toolkit/ImageView.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

namespace tljira {

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
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    const QSize limit(side, side);
    const QSize size = reader.size();
    if (size.isValid() && size.boundedTo(limit) != size)
        reader.setScaledSize(size.scaled(limit, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    const QImage image = reader.read();
    if (image.isNull() || image.size().boundedTo(limit) == image.size())
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
