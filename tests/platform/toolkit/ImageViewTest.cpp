#include "platform/toolkit/ImageView.h"

#include <QBuffer>

#include <gmock/gmock.h>

namespace {

using tljira::ImageView;

QImage filled(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

QByteArray bytesOf(const QImage& image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
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
