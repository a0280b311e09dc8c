#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/Window.h"
#include "platform/toolkit/windows/WindowDelegate.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/WaitUntil.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using namespace tljira;
using testing::ElementsAre;
using testing::IsEmpty;

std::shared_ptr<Window> windowOfSize(const char* title, int width, int height)
{
    auto* content = new QWidget;
    content->resize(width, height);
    return Window::create(QString::fromLatin1(title), content);
}

class Sheet : public testing::Test
{
protected:
    Sheet()
    {
        pretendDecorations(QMargins());
        parent->setFrame(QRectF(200, 100, 400, 300), true);
        parent->makeKeyAndOrderFront();
    }

    ~Sheet() override { pretendDecorations(std::nullopt); }

    Window::SheetCompletion note()
    {
        return [this](int code) { codes.append(code); };
    }

    std::shared_ptr<Window> parent = windowOfSize("Parent", 400, 300);
    std::shared_ptr<Window> sheet = windowOfSize("Sheet", 200, 100);
    std::shared_ptr<Window> second = windowOfSize("Second", 200, 100);
    QList<int> codes;
};

TEST_F(Sheet, isUpWhenBeginReturnsAndItsCompletionWaits)
{
    parent->beginSheet(sheet, note());

    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->sheetParent(), parent);
    EXPECT_EQ(parent->attachedSheet(), sheet);
    EXPECT_THAT(codes, IsEmpty());
}

TEST_F(Sheet, hangsCentredUnderTheUpperEdgeOfItsParent)
{
    parent->beginSheet(sheet, note());

    EXPECT_EQ(sheet->frame(), QRectF(200 + 100, 100 + 300 - 100, 200, 100));
}

TEST_F(Sheet, hangsBelowTheParentsTitleBarWithoutOneOfItsOwn)
{
    pretendDecorations(QMargins(0, 24, 0, 0));
    parent->setFrame(QRectF(200, 100, 400, 324), true);

    parent->beginSheet(sheet, note());

    EXPECT_EQ(sheet->frame(), QRectF(300, 100 + 300 - 100, 200, 100));
}

TEST_F(Sheet, isSetOffFromItsParentByALine)
{
    const QColor inside = sheet->widget()->grab().toImage().pixelColor(0, 50);
    const auto colorAt = [this](int x) { return sheet->widget()->grab().toImage().pixelColor(x, 50); };

    parent->beginSheet(sheet, note());
    EXPECT_TRUE(tests::waitUntil([&] { return colorAt(1) == inside; }));
    EXPECT_NE(colorAt(0), inside);

    parent->endSheet(sheet);
    EXPECT_EQ(colorAt(0), inside);
}

TEST_F(Sheet, goesAlongWhenItsParentMoves)
{
    parent->beginSheet(sheet, note());

    parent->setFrame(parent->frame().translated(-30, 40), true);

    EXPECT_EQ(sheet->frame(), QRectF(270, 340, 200, 100));
}

TEST_F(Sheet, blocksItsParentOnly)
{
    const auto bystander = windowOfSize("Bystander", 100, 100);
    bystander->makeKeyAndOrderFront();

    parent->beginSheet(sheet, note());

    EXPECT_FALSE(sheet->widget()->isWindow());
    EXPECT_EQ(sheet->widget()->windowHandle(), nullptr);
    EXPECT_EQ(Window::windowOf(sheet->contentView()), sheet);
    EXPECT_EQ(Window::windowOf(parent->contentView()), parent);
    auto* parentButton = new QPushButton(parent->contentView());
    auto* bystanderButton = new QPushButton(bystander->contentView());
    parentButton->show();
    bystanderButton->show();
    int parentClicks = 0;
    int bystanderClicks = 0;
    QObject::connect(parentButton, &QPushButton::clicked, [&] { ++parentClicks; });
    QObject::connect(bystanderButton, &QPushButton::clicked, [&] { ++bystanderClicks; });
    const auto click = [](QWidget* button) {
        QTest::mouseClick(button->window()->windowHandle(), Qt::LeftButton, {},
                          button->mapTo(button->window(), QPoint(3, 3)));
    };
    click(parentButton);
    click(bystanderButton);
    EXPECT_EQ(parentClicks, 0);
    EXPECT_EQ(bystanderClicks, 1);

    parent->endSheet(sheet);
    click(parentButton);
    EXPECT_EQ(parentClicks, 1);
}

TEST_F(Sheet, thatWasAWindowBeforeIsNoneForTheWindowSystem)
{
    sheet->makeKeyAndOrderFront();
    ASSERT_NE(sheet->widget()->windowHandle(), nullptr);

    parent->beginSheet(sheet, note());

    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->widget()->windowHandle(), nullptr);
    EXPECT_EQ(sheet->widget()->window(), parent->widget());
}

TEST_F(Sheet, endsWithTheGivenCodeInsideTheCall)
{
    parent->beginSheet(sheet, note());

    parent->endSheet(sheet, ModalResponse::OK);

    EXPECT_THAT(codes, ElementsAre(1));
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(sheet->sheetParent(), nullptr);
    EXPECT_EQ(parent->attachedSheet(), nullptr);
    EXPECT_TRUE(parent->isVisible());
}

TEST_F(Sheet, endsWithStopWithoutACode)
{
    parent->beginSheet(sheet, note());

    parent->endSheet(sheet);

    EXPECT_THAT(codes, ElementsAre(-1000));
}

TEST_F(Sheet, endsOnce)
{
    parent->beginSheet(sheet, note());

    parent->endSheet(sheet, 0);
    parent->endSheet(sheet, 1);

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(Sheet, isOffScreenAndFreeWhenItsCompletionRuns)
{
    parent->beginSheet(sheet, [&](int) {
        EXPECT_FALSE(sheet->isVisible());
        EXPECT_EQ(sheet->sheetParent(), nullptr);
        codes.append(7);
    });

    parent->endSheet(sheet);

    EXPECT_THAT(codes, ElementsAre(7));
}

TEST_F(Sheet, thatIsNoneIsNotEnded)
{
    parent->endSheet(sheet, 1);
    parent->endSheet(nullptr, 1);
    sheet->makeKeyAndOrderFront();
    parent->endSheet(sheet, 1);

    EXPECT_TRUE(sheet->isVisible());

    second->beginSheet(sheet, note());
    parent->endSheet(sheet, 1);
    EXPECT_EQ(sheet->sheetParent(), second);
    EXPECT_THAT(codes, IsEmpty());
}

TEST_F(Sheet, ofNothingIsNoSheet)
{
    parent->beginSheet(nullptr, note());

    EXPECT_EQ(parent->attachedSheet(), nullptr);
    EXPECT_THAT(codes, IsEmpty());
}

TEST_F(Sheet, waitsForTheOneThatIsUp)
{
    parent->beginSheet(sheet, note());

    parent->beginSheet(second, [&](int code) { codes.append(100 + code); });
    EXPECT_FALSE(second->isVisible());
    EXPECT_EQ(second->sheetParent(), parent);
    EXPECT_EQ(parent->attachedSheet(), sheet);

    parent->endSheet(sheet, 1);
    EXPECT_TRUE(second->isVisible());
    EXPECT_EQ(parent->attachedSheet(), second);
    parent->endSheet(second, 0);
    EXPECT_THAT(codes, ElementsAre(1, 100));
}

TEST_F(Sheet, canEndWhileItWaits)
{
    parent->beginSheet(sheet, note());
    parent->beginSheet(second, [&](int code) { codes.append(100 + code); });

    parent->endSheet(second, 1);

    EXPECT_THAT(codes, ElementsAre(101));
    EXPECT_EQ(parent->attachedSheet(), sheet);
    parent->endSheet(sheet);
    EXPECT_EQ(parent->attachedSheet(), nullptr);
    EXPECT_FALSE(second->isVisible());
}

TEST_F(Sheet, begunInACompletionQueuesBehindTheOnesThatWait)
{
    parent->beginSheet(sheet, [&](int) { parent->beginSheet(sheet, note()); });
    parent->beginSheet(second, note());

    parent->endSheet(sheet);

    EXPECT_EQ(parent->attachedSheet(), second);
    EXPECT_FALSE(sheet->isVisible());
    parent->endSheet(second);
    EXPECT_EQ(parent->attachedSheet(), sheet);
    EXPECT_TRUE(sheet->isVisible());
}

TEST_F(Sheet, canBeBegunAgainOnceItEnded)
{
    parent->beginSheet(sheet, note());
    parent->endSheet(sheet, 3);
    parent->beginSheet(sheet, note());
    parent->endSheet(sheet, 4);

    EXPECT_THAT(codes, ElementsAre(3, 4));
}

TEST_F(Sheet, isNotBegunTwiceAndThatIsLogged)
{
    const tests::LogCapture log;
    parent->beginSheet(sheet, note());

    parent->beginSheet(sheet, note());
    second->beginSheet(sheet, note());

    EXPECT_EQ(sheet->sheetParent(), parent);
    const QString line = QStringLiteral("window \"Sheet\" is a sheet already and is not begun again");
    EXPECT_THAT(log.lines(), ElementsAre(line, line));
    parent->endSheet(sheet, 1);
    EXPECT_THAT(codes, ElementsAre(1));
    EXPECT_EQ(parent->attachedSheet(), nullptr);
}

TEST_F(Sheet, cannotBeAWindowsOwnNorItsParents)
{
    const tests::LogCapture log;
    parent->beginSheet(sheet, note());

    parent->beginSheet(parent, note());
    sheet->beginSheet(parent, note());

    EXPECT_EQ(parent->sheetParent(), nullptr);
    EXPECT_EQ(sheet->attachedSheet(), nullptr);
    EXPECT_EQ(log.lines().size(), 2);
}

TEST_F(Sheet, canHaveASheetOfItsOwn)
{
    parent->beginSheet(sheet, note());
    sheet->beginSheet(second, note());

    EXPECT_TRUE(second->isVisible());
    sheet->endSheet(second, 5);
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_THAT(codes, ElementsAre(5));
}

TEST_F(Sheet, ofAHiddenWindowComesUpWithIt)
{
    parent->orderOut();

    parent->beginSheet(sheet, note());
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(parent->attachedSheet(), sheet);

    parent->makeKeyAndOrderFront();
    EXPECT_TRUE(sheet->isVisible());
    parent->orderOut();
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_THAT(codes, IsEmpty());
}

TEST_F(Sheet, endsWithStopWhenItsParentCloses)
{
    parent->beginSheet(sheet, note());
    parent->beginSheet(second, note());

    parent->close();

    EXPECT_THAT(codes, ElementsAre(-1000, -1000));
    EXPECT_FALSE(parent->isVisible());
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_FALSE(second->isVisible());
}

TEST_F(Sheet, endsWithStopWhenItIsClosedByTheProgram)
{
    parent->beginSheet(sheet, note());

    sheet->close();

    EXPECT_THAT(codes, ElementsAre(-1000));
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(Sheet, endsWithCancelWhenTheUserClosesItsParent)
{
    parent->beginSheet(sheet, note());
    parent->beginSheet(second, note());

    parent->widget()->windowHandle()->close();

    EXPECT_THAT(codes, ElementsAre(ModalResponse::Cancel, ModalResponse::Stop));
    EXPECT_FALSE(parent->isVisible());
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(Sheet, doesWhatEscapeDoesWhenTheUserClosesItsParent)
{
    auto* cancel = new QPushButton(sheet->contentView());
    cancel->setShortcut(QKeySequence(Qt::Key_Escape));
    QObject::connect(cancel, &QPushButton::clicked, [&] { parent->endSheet(sheet, 17); });
    parent->beginSheet(sheet, note());

    parent->widget()->windowHandle()->close();

    EXPECT_THAT(codes, ElementsAre(17));
    EXPECT_FALSE(parent->isVisible());
}

TEST_F(Sheet, ofASheetEndsFirstWhenTheUserClosesTheWindow)
{
    parent->beginSheet(sheet, [&](int code) { codes.append(100 + code); });
    sheet->beginSheet(second, [&](int code) { codes.append(200 + code); });

    parent->widget()->windowHandle()->close();

    EXPECT_THAT(codes, ElementsAre(200, 100));
    EXPECT_FALSE(parent->isVisible());
}

TEST_F(Sheet, doesOnItsCloseButtonWhatEscapeDoes)
{
    parent->beginSheet(sheet, note());
    sheet->widget()->close();
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_THAT(codes, IsEmpty());

    auto* cancel = new QPushButton(sheet->contentView());
    cancel->setShortcut(QKeySequence(Qt::Key_Escape));
    cancel->show();
    QObject::connect(cancel, &QPushButton::clicked, [&] { parent->endSheet(sheet, ModalResponse::Cancel); });
    sheet->widget()->close();

    EXPECT_FALSE(sheet->isVisible());
    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(Sheet, dropsItsCompletionWhenItsParentIsDestroyed)
{
    const auto held = std::make_shared<int>(1);
    parent->beginSheet(sheet, [this, held](int code) { codes.append(code); });
    EXPECT_EQ(held.use_count(), 2);

    parent.reset();

    EXPECT_THAT(codes, IsEmpty());
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_FALSE(sheet->isVisible());
    EXPECT_EQ(sheet->sheetParent(), nullptr);
}

TEST_F(Sheet, mayTakeItsParentAlongInItsCompletion)
{
    const std::weak_ptr<Window> gone = parent;
    parent->beginSheet(sheet, [&](int) {
        parent->close();
        parent.reset();
    });

    gone.lock()->endSheet(sheet, 1);
    tests::drainMainQueue();

    EXPECT_TRUE(gone.expired());
    EXPECT_FALSE(sheet->isVisible());
}

TEST_F(Sheet, isAnOrdinaryWindowAgainAfterItEnded)
{
    parent->beginSheet(sheet, note());
    parent->endSheet(sheet);

    sheet->makeKeyAndOrderFront();

    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(sheet->widget()->windowModality(), Qt::NonModal);
    EXPECT_EQ(sheet->widget()->windowHandle()->transientParent(), nullptr);
    sheet->widget()->close();
    EXPECT_FALSE(sheet->isVisible());
}

} // namespace
