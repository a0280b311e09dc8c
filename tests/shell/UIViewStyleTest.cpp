#include "shell/UIViewStyle.h"

#include "platform/toolkit/nib/Nib.h"
#include "platform/toolkit/views/Layer.h"

#include <gmock/gmock.h>

namespace {

using tljira::Layer;

class UIViewStyleTest : public testing::Test
{
protected:
    Layer* layer() const { return Layer::layerOf(&view); }

    QWidget view;
};

TEST_F(UIViewStyleTest, givesAViewALayerWithItsFirstProperty)
{
    ASSERT_EQ(layer(), nullptr);

    UIViewStyle::setTBorderRadius(&view, 5);

    ASSERT_NE(layer(), nullptr);
    EXPECT_EQ(layer()->cornerRadius(), 5.0);
    EXPECT_EQ(layer()->borderWidth(), 0.0);
    EXPECT_EQ(layer()->backgroundColor(), std::nullopt);
    EXPECT_EQ(layer()->borderColor(), std::nullopt);
}

TEST_F(UIViewStyleTest, usesTheLayerThatTheViewHas)
{
    UIViewStyle::setTBackgroundColor(&view, QColor(1, 2, 3));
    Layer* first = layer();
    UIViewStyle::setTBorderColor(&view, QColor(4, 5, 6));
    UIViewStyle::setTBorderThickness(&view, 3);

    EXPECT_EQ(layer(), first);
    EXPECT_EQ(layer()->backgroundColor(), QColor(1, 2, 3));
    EXPECT_EQ(layer()->borderColor(), QColor(4, 5, 6));
    EXPECT_EQ(layer()->borderWidth(), 3.0);
}

TEST_F(UIViewStyleTest, clearsWhatItGetsNoColourFor)
{
    UIViewStyle::setTBackgroundColor(&view, QColor(1, 2, 3));
    UIViewStyle::setTBorderColor(&view, QColor(4, 5, 6));
    UIViewStyle::setTBackgroundColor(&view, std::nullopt);
    UIViewStyle::setTBorderColor(&view, std::nullopt);

    EXPECT_EQ(layer()->backgroundColor(), std::nullopt);
    EXPECT_EQ(layer()->borderColor(), std::nullopt);
}

TEST_F(UIViewStyleTest, doesNothingWithoutAView)
{
    UIViewStyle::setTBackgroundColor(nullptr, QColor(1, 2, 3));
    UIViewStyle::setTBorderRadius(nullptr, 5);

    EXPECT_EQ(layer(), nullptr);
}

TEST_F(UIViewStyleTest, stylesTheViewsOfInterfaceFilesByTheirProperties)
{
    UIViewStyle::styleLoadedViews();
    UIViewStyle::styleLoadedViews();
    const auto bundle = tljira::Bundle::bundleWithIdentifier(QStringLiteral("com.example.shell"));
    ASSERT_TRUE(bundle.has_value());
    const auto views = tljira::Nib::load(QStringLiteral("Styled"), *bundle)->instantiate();
    ASSERT_NE(views.view, nullptr);
    const auto* styled = Layer::layerOf(views.view->findChild<QWidget*>(QStringLiteral("styled")));

    ASSERT_NE(styled, nullptr);
    EXPECT_EQ(styled->backgroundColor(), QColor(10, 20, 30, 28));
    EXPECT_EQ(styled->borderColor(), QColor(1, 2, 3));
    EXPECT_EQ(styled->cornerRadius(), 6.0);
    EXPECT_EQ(styled->borderWidth(), 2.0);
    EXPECT_EQ(Layer::layerOf(views.view->findChild<QWidget*>(QStringLiteral("plain"))), nullptr);
    delete views.view;
}

} // namespace
