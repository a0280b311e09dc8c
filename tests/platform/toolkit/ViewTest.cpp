#include "platform/toolkit/views/View.h"

#include "platform/foundation/Log.h"
#include "platform/toolkit/windows/Window.h"
#include "tests/kit/LogCapture.h"

#include <QLabel>
#include <QVBoxLayout>

#include <gmock/gmock.h>

namespace {

using namespace tljira;
using testing::ElementsAre;

TEST(View, addedToAVisibleSuperviewShows)
{
    QWidget superview;
    superview.show();
    auto* view = new QWidget;

    addSubview(&superview, view);

    EXPECT_TRUE(view->isVisible());
    EXPECT_THAT(subviews(&superview), ElementsAre(view));
}

TEST(View, thatWasHiddenStaysHiddenWhenAdded)
{
    QWidget superview;
    superview.show();
    auto* view = new QWidget;
    setHidden(view, true);

    addSubview(&superview, view);

    EXPECT_FALSE(view->isVisible());
    setHidden(view, false);
    EXPECT_TRUE(view->isVisible());
}

TEST(View, takenOutIsOffScreenAndShowsAgainWhenAddedAgain)
{
    QWidget superview;
    superview.show();
    auto* view = new QWidget;
    addSubview(&superview, view);

    removeFromSuperview(view);
    EXPECT_FALSE(view->isVisible());
    EXPECT_THAT(subviews(&superview), ElementsAre());
    setHidden(view, false);
    EXPECT_FALSE(view->isVisible());

    addSubview(&superview, view);
    EXPECT_TRUE(view->isVisible());
}

TEST(View, addedLastIsOnTop)
{
    QWidget superview;
    auto* first = new QWidget(&superview);
    auto* second = new QWidget(&superview);

    addSubview(&superview, first);

    EXPECT_THAT(subviews(&superview), ElementsAre(second, first));
}

TEST(View, isLaidOutAtOnceThoughItWasNeverShown)
{
    QWidget view;
    auto* layout = new QVBoxLayout(&view);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* inner = new QWidget;
    layout->addWidget(inner);
    view.resize(300, 200);
    layoutSubtreeIfNeeded(&view);
    EXPECT_EQ(inner->geometry(), QRect(0, 0, 300, 200));

    view.resize(400, 100);
    layoutSubtreeIfNeeded(&view);

    EXPECT_EQ(inner->geometry(), QRect(0, 0, 400, 100));
}

TEST(View, thatIsAbsentIsAQuietNoOp)
{
    QWidget view;
    addSubview(nullptr, &view);
    addSubview(&view, nullptr);
    removeFromSuperview(nullptr);
    layoutSubtreeIfNeeded(nullptr);
    setHidden(nullptr, true);
    setEnabled(nullptr, true);
    setText(QPointer<QLabel>(), QStringLiteral("text"));

    EXPECT_TRUE(subviews(nullptr).isEmpty());
    EXPECT_EQ(text(QPointer<QLabel>()), QString());
    EXPECT_EQ(view.parentWidget(), nullptr);
}

TEST(View, describesItselfInTheLog)
{
    QLabel label;
    label.setObjectName(QStringLiteral("errorLabel"));
    const QPointer<QLabel> outlet(&label);
    const tests::LogCapture log;

    tljira::log(u"error: %@ %@", outlet, QPointer<QLabel>());

    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("error: <QLabel: errorLabel> (null)")));
}

} // namespace
