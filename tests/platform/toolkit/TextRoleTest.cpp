#include "platform/toolkit/views/TextRole.h"

#include "platform/toolkit/views/PaletteColors.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/RolesForm.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

using tljira::TextRole;

class TextRoleTest : public testing::Test
{
protected:
    void apply(const char* role) { TextRole::apply(label, QString::fromLatin1(role)); }

    QColor color() const { return label->palette().color(QPalette::Active, QPalette::WindowText); }

    static QFont sized(double points)
    {
        QFont font;
        font.setPointSizeF(points);
        return font;
    }

    static QPalette dark()
    {
        QPalette palette(QColor(0x30, 0x30, 0x30), QColor(0x20, 0x20, 0x20));
        return palette;
    }

    QWidget view;
    QLabel* label = new QLabel(QStringLiteral("text"), &view);
};

TEST_F(TextRoleTest, comesFromAnInterfaceFile)
{
    const tests::RolesForm form;
    const auto* title = form.view<QLabel>("title");

    EXPECT_TRUE(title->font().bold());
    EXPECT_DOUBLE_EQ(title->font().pointSizeF(), QApplication::font().pointSizeF() * 1.2);
}

TEST_F(TextRoleTest, makesAHeadingOneFifthLargerThanTheTextAroundIt)
{
    view.setFont(sized(10));
    apply("heading");
    EXPECT_DOUBLE_EQ(label->font().pointSizeF(), 12);
    EXPECT_TRUE(label->font().bold());

    QFont pixels;
    pixels.setPixelSize(20);
    view.setFont(pixels);
    EXPECT_EQ(label->font().pixelSize(), 24);
}

TEST_F(TextRoleTest, followsTheFontOfTheProgram)
{
    const tests::RolesForm form;
    const auto* title = form.view<QLabel>("title");
    for (const double points : {20.0, 9.0}) {
        QApplication::setFont(sized(points));
        tests::drainMainQueue();
        EXPECT_DOUBLE_EQ(title->font().pointSizeF(), points * 1.2);
    }
}

TEST_F(TextRoleTest, followsTheFontAndTheColoursOfWhereItStands)
{
    apply("heading");
    QWidget other;
    other.setFont(sized(30));
    label->setParent(&other);
    EXPECT_DOUBLE_EQ(label->font().pointSizeF(), 36);
    // The place before has no say any more.
    view.setFont(sized(5));
    EXPECT_DOUBLE_EQ(label->font().pointSizeF(), 36);

    apply("help");
    other.setPalette(dark());
    EXPECT_EQ(color(), tljira::quietColor(dark()));
    label->setParent(nullptr);
    view.setPalette(QPalette(Qt::white));
    label->setParent(&view);
    EXPECT_EQ(color(), tljira::quietColor(view.palette()));
}

TEST_F(TextRoleTest, changesWithTheRole)
{
    view.setFont(sized(10));
    apply("heading");
    apply("help");
    EXPECT_DOUBLE_EQ(label->font().pointSizeF(), 10);
    EXPECT_FALSE(label->font().bold());
    EXPECT_EQ(color(), tljira::quietColor(view.palette()));
    apply("strong");
    EXPECT_TRUE(label->font().bold());
    EXPECT_EQ(color(), view.palette().color(QPalette::Active, QPalette::WindowText));
}

TEST_F(TextRoleTest, colorsWhatTellsOfErrorsSuccessesAndLinks)
{
    apply("error");
    EXPECT_EQ(color(), tljira::errorColor(view.palette()));
    apply("success");
    EXPECT_EQ(color(), tljira::successColor(view.palette()));
    QPushButton* button = new QPushButton(&view);
    TextRole::apply(button, QStringLiteral("link"));
    EXPECT_EQ(button->palette().color(QPalette::Active, QPalette::ButtonText), tljira::linkColor(view.palette()));
}

} // namespace
