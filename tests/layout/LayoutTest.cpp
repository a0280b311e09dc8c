// The check itself: it has to find what it is there to find.

#include "tests/layout/Layout.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>

#include <gmock/gmock.h>

namespace {

using namespace tests;
using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

MATCHER_P(tellsOf, words, "")
{
    return arg.contains(QString::fromLatin1(words));
}

class LayoutTest : public testing::Test
{
protected:
    LayoutTest()
    {
        content.resize(400, 300);
        label->setObjectName(QStringLiteral("label"));
        label->setText(QStringLiteral("a text of some length"));
        label->setGeometry(QRect(QPoint(10, 10), label->sizeHint()));
        button->setObjectName(QStringLiteral("button"));
        button->setText(QStringLiteral("Button"));
        button->setGeometry(QRect(QPoint(10, 200), button->sizeHint()));
        window = tljira::Window::create(QStringLiteral("Window"), &content);
        window->makeKeyAndOrderFront();
    }

    QWidget content;
    QLabel* label = new QLabel(&content);
    QPushButton* button = new QPushButton(&content);
    std::shared_ptr<tljira::Window> window;
};

TEST_F(LayoutTest, hasNoFlawWhereEverythingHasItsRoom)
{
    EXPECT_THAT(layoutFlaws(*window), IsEmpty());
}

TEST_F(LayoutTest, findsTextsThatAreCutOff)
{
    label->resize(label->width() - 5, label->height());
    EXPECT_THAT(layoutFlaws(*window), Contains(tellsOf("label")));
    label->resize(label->width() + 5, label->height() - 4);
    EXPECT_THAT(layoutFlaws(*window), Contains(tellsOf("label")));
    label->resize(label->sizeHint());
    button->resize(button->width() / 2, button->height());
    EXPECT_THAT(layoutFlaws(*window), Contains(tellsOf("button")));
}

TEST_F(LayoutTest, findsWordsThatWrapBelowTheEnd)
{
    label->setWordWrap(true);
    label->resize(label->fontMetrics().horizontalAdvance(QStringLiteral("a text of")), label->height());
    EXPECT_THAT(layoutFlaws(*window), Contains(tellsOf("label")));
    label->resize(label->width(), 3 * label->height());
    EXPECT_THAT(layoutFlaws(*window), IsEmpty());
}

TEST_F(LayoutTest, findsControlsThatOverlap)
{
    button->move(label->geometry().bottomRight() - QPoint(3, 3));
    EXPECT_THAT(layoutFlaws(*window), Contains(tellsOf("overlaps")));
    button->hide();
    EXPECT_THAT(layoutFlaws(*window), IsEmpty());
}

TEST_F(LayoutTest, findsWhatLiesOutside)
{
    button->move(QPoint(content.width() - 10, 200));
    EXPECT_THAT(layoutFlaws(*window), Contains(tellsOf("outside")));
}

TEST_F(LayoutTest, letsScrolledTextsBeLongerThanTheirPlace)
{
    QScrollArea area(&content);
    area.setGeometry(10, 60, 200, 100);
    auto* text = new QLabel(QStringLiteral("\nline").repeated(40));
    text->resize(text->sizeHint());
    area.setWidget(text);
    area.show();
    EXPECT_THAT(layoutFlaws(*window), IsEmpty());
}

} // namespace
