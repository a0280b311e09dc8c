#include "platform/toolkit/views/ImageView.h"

#include <QBuffer>
#include <QImageWriter>
#include <QtEndian>

#include <gmock/gmock.h>

namespace {

using tljira::ImageView;

QImage filled(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

QByteArray bytesOf(const QImage& image, const char* format = "PNG")
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return buffer.data();
}

/// The rectangle that a view of 40 by 40 points paints red.
QRect paintedBy(const QImage& image)
{
    ImageView view;
    view.resize(40, 40);
    view.setImage(image);
    QImage canvas(view.size(), QImage::Format_ARGB32);
    canvas.fill(Qt::transparent);
    view.render(&canvas, QPoint(), QRegion(), QWidget::RenderFlags());
    QRect painted;
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            if (canvas.pixelColor(x, y) == Qt::red)
                painted |= QRect(x, y, 1, 1);
        }
    }
    return painted;
}

TEST(ImageViewTest, readsASmallPictureAsItIs)
{
    EXPECT_EQ(ImageView::decode(bytesOf(filled({48, 32})), 256).size(), QSize(48, 32));
}

TEST(ImageViewTest, shrinksALargePictureInItsProportions)
{
    EXPECT_EQ(ImageView::decode(bytesOf(filled({1000, 500})), 100).size(), QSize(100, 50));
    EXPECT_EQ(ImageView::decode(bytesOf(filled({50, 4000})), 100).size(), QSize(1, 100));
    EXPECT_EQ(ImageView::decode(bytesOf(filled({1, 4000})), 100).size(), QSize(1, 100));
}

TEST(ImageViewTest, readsNoPictureFromOtherBytes)
{
    EXPECT_TRUE(ImageView::decode("<html></html>", 100).isNull());
    EXPECT_TRUE(ImageView::decode(QByteArray(), 100).isNull());
    EXPECT_TRUE(ImageView::decode(bytesOf(filled({48, 48})).left(40), 100).isNull());
}

/// A JPEG whose head announces another size than its data has.
QByteArray jpegClaiming(quint16 width, quint16 height)
{
    QByteArray bytes = bytesOf(filled({16, 16}), "JPEG");
    const qsizetype frame = bytes.indexOf("\xff\xc0");
    EXPECT_GT(frame, 0);
    qToBigEndian(height, bytes.data() + frame + 5);
    qToBigEndian(width, bytes.data() + frame + 7);
    return bytes;
}

TEST(ImageViewTest, readsTheFormatsOfAvatars)
{
    for (const char* format : {"PNG", "JPEG", "BMP"})
        EXPECT_EQ(ImageView::decode(bytesOf(filled({48, 32}), format), 256).size(), QSize(48, 32)) << format;
    const QByteArray gif =
        QByteArray::fromHex("47494638396101000100800000ff000000000021f90400000000002c000000000100010000"
                            "02024401003b");
    EXPECT_EQ(ImageView::decode(gif, 256).size(), QSize(1, 1));
}

TEST(ImageViewTest, refusesFormatsWhosePicturesMayBeAnything)
{
    EXPECT_TRUE(ImageView::decode("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>", 256).isNull());
    for (const char* format : {"XPM", "PPM", "ICO"}) {
        const QByteArray bytes = bytesOf(filled({48, 32}), format);
        EXPECT_TRUE(bytes.isEmpty() || ImageView::decode(bytes, 256).isNull()) << format;
    }
}

TEST(ImageViewTest, refusesAPictureOfTooManyPixelsBeforeItIsRead)
{
    EXPECT_FALSE(ImageView::decode(jpegClaiming(4096, 4096), 64).isNull());
    EXPECT_TRUE(ImageView::decode(jpegClaiming(4097, 16), 64).isNull());
    EXPECT_TRUE(ImageView::decode(jpegClaiming(16, 4097), 64).isNull());
    EXPECT_TRUE(ImageView::decode(jpegClaiming(65000, 65000), 64).isNull());
    EXPECT_FALSE(ImageView::decode(bytesOf(filled({4096, 1})), 64).isNull());
    EXPECT_TRUE(ImageView::decode(bytesOf(filled({4097, 1})), 64).isNull());
}

TEST(ImageViewTest, refusesMoreThanFourMebibytes)
{
    QByteArray bytes = bytesOf(filled({16, 16}));
    bytes.append(QByteArray((4 << 20) - bytes.size(), 'x'));
    EXPECT_FALSE(ImageView::decode(bytes, 64).isNull());
    EXPECT_TRUE(ImageView::decode(bytes + 'x', 64).isNull());
}

/// A progressive JPEG that has its first scan so many times more.
QByteArray jpegRepeatingAScan(int times)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "JPEG");
    writer.setProgressiveScanWrite(true);
    EXPECT_TRUE(writer.write(filled({64, 64})));
    const QByteArray& bytes = buffer.data();
    const qsizetype begin = bytes.indexOf("\xff\xda");
    const qsizetype end = bytes.indexOf("\xff\xc4", begin);
    EXPECT_TRUE(begin > 0 && end > begin);
    return bytes.first(end) + bytes.sliced(begin, end - begin).repeated(times) + bytes.sliced(end);
}

TEST(ImageViewTest, refusesAPictureOfEndlessScans)
{
    EXPECT_EQ(ImageView::decode(jpegRepeatingAScan(40), 256).size(), QSize(64, 64));
    EXPECT_TRUE(ImageView::decode(jpegRepeatingAScan(80), 256).isNull());
}

TEST(ImageViewTest, paintsNothingWithoutAPicture)
{
    EXPECT_EQ(paintedBy(QImage()), QRect());
}

TEST(ImageViewTest, fillsTheViewWithASquare)
{
    EXPECT_EQ(paintedBy(filled({48, 48})), QRect(0, 0, 40, 40));
    EXPECT_EQ(paintedBy(filled({16, 16})), QRect(0, 0, 40, 40));
}

TEST(ImageViewTest, keepsProportionsInTheMiddle)
{
    EXPECT_EQ(paintedBy(filled({80, 40})), QRect(0, 10, 40, 20));
    EXPECT_EQ(paintedBy(filled({40, 80})), QRect(10, 0, 20, 40));
}

TEST(ImageViewTest, forgetsThePictureBefore)
{
    ImageView view;
    view.setImage(filled({48, 48}));
    view.setImage(QImage());

    EXPECT_TRUE(view.image().isNull());
}

} // namespace
