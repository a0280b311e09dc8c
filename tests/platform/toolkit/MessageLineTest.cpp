#include "platform/toolkit/views/MessageLine.h"

#include "platform/toolkit/views/PaletteColors.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/toolkit/RolesForm.h"

#include <QAccessible>
#include <QColor>
#include <QImage>
#include <QLayout>

#include <gmock/gmock.h>

namespace {

using tljira::MessageLine;

class MessageLineTest : public testing::Test
{
protected:
    MessageLineTest()
    {
        QObject::connect(line, &MessageLine::announced, line, [this](const QString& words) { heard.append(words); });
    }

    void say(const char* text)
    {
        MessageLine::show(label, QString::fromLatin1(text));
        tests::drainMainQueue();
    }

    /// Or one that is rounded otherwise.
    bool hasPixel(const QColor& color) const
    {
        const QImage image = line->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (std::abs(pixel.red() - color.red()) <= 1 && std::abs(pixel.green() - color.green()) <= 1 &&
                    std::abs(pixel.blue() - color.blue()) <= 1)
                    return true;
            }
        }
        return false;
    }

    tests::RolesForm form;
    MessageLine* line = form.view<MessageLine>("errorLine");
    QLabel* label = form.view<QLabel>("errorLabel");
    /// What screen readers are told, in order.
    QStringList heard;
};

TEST_F(MessageLineTest, takesRoomOnlyWhileThereIsAText)
{
    const auto needed = [this] { return form.content->minimumSizeHint().height(); };
    const int before = needed();
    EXPECT_FALSE(line->isVisible());
    say("It went wrong.");
    EXPECT_TRUE(line->isVisible());
    EXPECT_GE(needed(), before + label->fontMetrics().height());
    say("");
    EXPECT_FALSE(line->isVisible());
    EXPECT_EQ(needed(), before);
}

TEST_F(MessageLineTest, isAnAlertForScreenReadersWheneverThereIsAText)
{
    EXPECT_EQ(QAccessible::queryAccessibleInterface(line)->role(), QAccessible::AlertMessage);
    say("");
    EXPECT_THAT(heard, testing::IsEmpty());
    say("It went wrong.");
    EXPECT_THAT(heard, testing::ElementsAre(QStringLiteral("It went wrong.")));
    say("It went wrong.");
    EXPECT_THAT(heard, testing::SizeIs(2));
    say("");
    EXPECT_THAT(heard, testing::SizeIs(2));
}

TEST_F(MessageLineTest, showsAnErrorInTheColourOfErrorsWithAnIcon)
{
    say("It went wrong.");
    const QColor red = tljira::errorColor(form.content->palette());
    EXPECT_EQ(label->palette().color(label->foregroundRole()), red);
    EXPECT_TRUE(hasPixel(tljira::errorBackground(form.content->palette())));
    const int beforeText = label->mapTo(line, QPoint(0, 0)).x();
    EXPECT_GE(beforeText, label->fontMetrics().ascent());
    label->setText(QStringLiteral(" "));
    EXPECT_TRUE(hasPixel(red));
}

TEST_F(MessageLineTest, hasItsIconOnTheOtherSideFromRightToLeft)
{
    form.content->setLayoutDirection(Qt::RightToLeft);
    say("It went wrong.");
    EXPECT_GE(line->width() - label->geometry().right(), label->fontMetrics().ascent());
    EXPECT_LT(label->x(), label->fontMetrics().ascent());
}

TEST_F(MessageLineTest, showsASuccessWithoutABackground)
{
    line = form.view<MessageLine>("doneLine");
    label = form.view<QLabel>("doneLabel");
    say("All is well.");
    EXPECT_EQ(label->palette().color(label->foregroundRole()), tljira::successColor(form.content->palette()));
    EXPECT_FALSE(hasPixel(tljira::errorBackground(form.content->palette())));
}

TEST_F(MessageLineTest, isNotNeededForALabel)
{
    QLabel alone;
    MessageLine::show(&alone, QStringLiteral("text"));
    EXPECT_EQ(alone.text(), QStringLiteral("text"));
    MessageLine::show(nullptr, QStringLiteral("text"));
}

TEST_F(MessageLineTest, hasRoomForAllLinesOfAText)
{
    say("It went wrong, and what can be said of that needs many more words than have room in one line of a window.");
    form.content->resize(200, form.content->layout()->totalHeightForWidth(200));
    tests::drainMainQueue();
    EXPECT_GT(label->height(), 3 * label->fontMetrics().height());
    EXPECT_GE(label->height(), label->heightForWidth(label->width()));
}

} // namespace
