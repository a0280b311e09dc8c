#include "platform/toolkit/views/Layer.h"

#include <QImage>
#include <QPushButton>

#include <gmock/gmock.h>

namespace {

using tljira::Layer;

QColor pixel(QWidget& view, int x, int y)
{
    return view.grab().toImage().pixelColor(x, y);
}

class LayerTest : public testing::Test
{
protected:
    LayerTest()
    {
        superview.resize(100, 100);
        QPalette white;
        white.setColor(QPalette::Window, Qt::white);
        superview.setPalette(white);
        view->setGeometry(10, 10, 80, 80);
    }

    QWidget superview;
    QWidget* view = new QWidget(&superview);
};

TEST_F(LayerTest, isMadeOnceOnWish)
{
    EXPECT_EQ(Layer::layerOf(view), nullptr);

    Layer* layer = Layer::wantLayer(view);

    EXPECT_NE(layer, nullptr);
    EXPECT_EQ(Layer::wantLayer(view), layer);
    EXPECT_EQ(Layer::layerOf(view), layer);
    EXPECT_EQ(Layer::layerOf(&superview), nullptr);
    EXPECT_EQ(Layer::layerOf(nullptr), nullptr);
    EXPECT_EQ(Layer::wantLayer(nullptr), nullptr);
}

TEST_F(LayerTest, drawsNothingWithoutColours)
{
    Layer* layer = Layer::wantLayer(view);
    layer->setBorderWidth(4);
    layer->setCornerRadius(9);

    EXPECT_EQ(pixel(superview, 50, 50), QColor(Qt::white));
    EXPECT_EQ(pixel(superview, 11, 50), QColor(Qt::white));
}

TEST_F(LayerTest, fillsItsViewOnly)
{
    Layer::wantLayer(view)->setBackgroundColor(QColor(Qt::red));

    EXPECT_EQ(pixel(superview, 10, 10), QColor(Qt::red));
    EXPECT_EQ(pixel(superview, 89, 89), QColor(Qt::red));
    EXPECT_EQ(pixel(superview, 9, 50), QColor(Qt::white));
}

TEST_F(LayerTest, mixesATranslucentColourWithWhatIsBehind)
{
    Layer::wantLayer(view)->setBackgroundColor(QColor::fromRgbF(0, 0, 0, 0.4F));

    EXPECT_EQ(pixel(superview, 50, 50), QColor(153, 153, 153));
}

TEST_F(LayerTest, roundsItsCorners)
{
    Layer* layer = Layer::wantLayer(view);
    layer->setBackgroundColor(QColor(Qt::red));

    layer->setCornerRadius(20);

    EXPECT_EQ(layer->cornerRadius(), 20.0);
    EXPECT_EQ(pixel(superview, 11, 11), QColor(Qt::white));
    EXPECT_EQ(pixel(superview, 50, 11), QColor(Qt::red));
    EXPECT_EQ(pixel(superview, 88, 88), QColor(Qt::white));
}

TEST_F(LayerTest, drawsItsBorderInsideTheView)
{
    Layer* layer = Layer::wantLayer(view);
    layer->setBackgroundColor(QColor(Qt::red));
    layer->setBorderColor(QColor(Qt::blue));

    layer->setBorderWidth(3);

    EXPECT_EQ(pixel(superview, 10, 50), QColor(Qt::blue));
    EXPECT_EQ(pixel(superview, 12, 50), QColor(Qt::blue));
    EXPECT_EQ(pixel(superview, 13, 50), QColor(Qt::red));
    EXPECT_EQ(pixel(superview, 9, 50), QColor(Qt::white));
    EXPECT_EQ(pixel(superview, 89, 50), QColor(Qt::blue));
    EXPECT_EQ(pixel(superview, 10, 10), QColor(Qt::blue));
}

TEST_F(LayerTest, losesAColourThatIsTakenAway)
{
    Layer* layer = Layer::wantLayer(view);
    layer->setBackgroundColor(QColor(Qt::red));
    layer->setBorderColor(QColor(Qt::blue));
    layer->setBorderWidth(3);

    layer->setBackgroundColor(std::nullopt);
    layer->setBorderColor(std::nullopt);

    EXPECT_EQ(layer->backgroundColor(), std::nullopt);
    EXPECT_EQ(layer->borderColor(), std::nullopt);
    EXPECT_EQ(pixel(superview, 50, 50), QColor(Qt::white));
    EXPECT_EQ(pixel(superview, 11, 50), QColor(Qt::white));
}

TEST_F(LayerTest, liesBehindTheSubviewsAndLeavesTheirLookAlone)
{
    auto* button = new QPushButton(QStringLiteral("Go"), view);
    button->setGeometry(20, 20, 40, 30);
    button->setAutoFillBackground(true);
    const QImage before = button->grab().toImage();

    Layer::wantLayer(view)->setBackgroundColor(QColor(Qt::red));

    EXPECT_EQ(button->grab().toImage(), before);
    EXPECT_NE(pixel(superview, 50, 45), QColor(Qt::red));
}

TEST_F(LayerTest, takesNegativeLengthsForNone)
{
    Layer* layer = Layer::wantLayer(view);

    layer->setCornerRadius(-1);
    layer->setBorderWidth(-2);

    EXPECT_EQ(layer->cornerRadius(), 0.0);
    EXPECT_EQ(layer->borderWidth(), 0.0);
}

} // namespace
