#include "platform/toolkit/nib/Nib.h"

#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/kit/LogCapture.h"
#include "tests/platform/toolkit/Forms.h"
#include "tests/platform/toolkit/TestCell.h"

#include <QLabel>

#include <gmock/gmock.h>

namespace {

using namespace tljira;
using testing::HasSubstr;
using testing::SizeIs;

std::shared_ptr<Nib> nibNamed(const char* name)
{
    return Nib::load(QString::fromLatin1(name), tests::forms());
}

TEST(Nib, ofAHolderGivesItsContentAndTheFurtherViews)
{
    const NibViews views = nibNamed("Form")->instantiate();

    ASSERT_TRUE(views.view);
    EXPECT_EQ(views.view->objectName(), QStringLiteral("view"));
    EXPECT_EQ(views.windowTitle, QStringLiteral("Form title"));
    ASSERT_THAT(views.rest, SizeIs(2));
    EXPECT_EQ(views.rest[0]->objectName(), QStringLiteral("errorView"));
    EXPECT_EQ(views.rest[1]->objectName(), QStringLiteral("successView"));
    EXPECT_EQ(views.rest[0]->geometry(), QRect(0, 0, 300, 100));
}

TEST(Nib, withoutAContentViewIsItselfTheView)
{
    const NibViews views = nibNamed("Plain")->instantiate();

    ASSERT_TRUE(views.view);
    EXPECT_EQ(views.view->objectName(), QStringLiteral("Plain"));
    EXPECT_THAT(views.rest, SizeIs(0));
    EXPECT_EQ(views.view->findChild<QLabel*>(QStringLiteral("nameLabel"))->text(), QStringLiteral("a <name>"));
}

TEST(Nib, makesItsViewsLargeEnoughForWhatTheyHold)
{
    const NibViews views = nibNamed("Plain")->instantiate();

    EXPECT_EQ(views.view->size(), views.view->minimumSizeHint());
    EXPECT_GE(views.view->width(), 120);
}

TEST(Nib, givesFreshViewsEachTime)
{
    const auto nib = nibNamed("Plain");

    EXPECT_NE(nib->instantiate().view, nib->instantiate().view);
}

TEST(Nib, leavesItsViewsOffScreenEvenWhenMadeVisible)
{
    const NibViews views = nibNamed("Form")->instantiate();

    views.rest[0]->setVisible(true);

    EXPECT_FALSE(views.rest[0]->isVisible());
    EXPECT_EQ(Window::windowOf(views.rest[0]), nullptr);
}

TEST(Nib, makesTheToolkitsOwnViews)
{
    const NibViews views = nibNamed("Form")->instantiate();

    EXPECT_NE(views.view->findChild<ProgressIndicator*>(QStringLiteral("spiner")), nullptr);
}

TEST(Nib, thatIsMissingIsLoggedByName)
{
    const tests::LogCapture log;

    const NibViews views = nibNamed("Nowhere")->instantiate();

    EXPECT_FALSE(views.view);
    ASSERT_THAT(log.lines(), SizeIs(1));
    EXPECT_EQ(log.lines()[0],
              QStringLiteral("interface file Nowhere is missing or empty: :/com.example.forms/Nowhere.ui"));
}

TEST(Nib, thatIsBrokenIsLoggedByName)
{
    const tests::LogCapture log;

    const NibViews views = nibNamed("Broken")->instantiate();

    EXPECT_FALSE(views.view);
    ASSERT_THAT(log.lines(), SizeIs(1));
    EXPECT_THAT(log.lines()[0].toStdString(), HasSubstr("interface file Broken is broken: "));
}

TEST(Nib, showsEveryLoadedViewToTheObserversWithItsProperties)
{
    const auto seen = std::make_shared<QHash<QString, QColor>>();
    observeLoadedViews([seen](QWidget* view) {
        seen->insert(view->objectName(), view->property("tBackgroundColor").value<QColor>());
    });

    nibNamed("Form")->instantiate();

    EXPECT_EQ(seen->value(QStringLiteral("view")), QColor(10, 20, 30));
    EXPECT_TRUE(seen->contains(QStringLiteral("loginButton")));
    EXPECT_TRUE(seen->contains(QStringLiteral("errorTitle")));
}

TEST(Nib, makesCellsFromTheirPrototype)
{
    registerViewClass<tests::TestCell>(QStringLiteral("TestCell"));
    const auto nib = nibNamed("List");

    const std::unique_ptr<TableCellView> first(nib->makeCell(QStringLiteral("testCell")));
    const std::unique_ptr<TableCellView> second(nib->makeCell(QStringLiteral("testCell")));

    auto* cell = dynamic_cast<tests::TestCell*>(first.get());
    ASSERT_NE(cell, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(cell->identifier(), QStringLiteral("testCell"));
    EXPECT_EQ(cell->height(), 50);
    ASSERT_TRUE(cell->titleLabel);
    EXPECT_EQ(cell->timesAwoken, 1);
}

TEST(Nib, keepsPrototypesOutOfItsViews)
{
    registerViewClass<tests::TestCell>(QStringLiteral("TestCell"));

    const NibViews views = nibNamed("List")->instantiate();

    ASSERT_THAT(views.rest, SizeIs(1));
    EXPECT_EQ(views.rest[0]->objectName(), QStringLiteral("plainWidget"));
}

TEST(Nib, refusesAPrototypeThatIsMissingOrNoCell)
{
    const tests::LogCapture log;
    const auto nib = nibNamed("List");

    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(nib->makeCell(QStringLiteral("otherCell")), nullptr);
        EXPECT_EQ(nib->makeCell(QStringLiteral("plainWidget")), nullptr);
    }

    EXPECT_THAT(log.lines(), testing::ElementsAre(
                                 QStringLiteral("interface file List has no cell otherCell: no such view"),
                                 QStringLiteral("interface file List has no cell plainWidget: it is no table cell")));
}

} // namespace
