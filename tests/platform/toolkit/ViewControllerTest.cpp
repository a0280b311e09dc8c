#include "platform/toolkit/windows/ViewController.h"

#include "platform/toolkit/views/View.h"
#include "tests/kit/LogCapture.h"
#include "tests/platform/toolkit/Forms.h"

#include <QLabel>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

class Panel : public ViewController
{
public:
    static std::shared_ptr<Panel> initWithNibName(const char* name, const std::optional<Bundle>& bundle)
    {
        const std::shared_ptr<Panel> self(new Panel);
        self->ViewController::initWithNibName(QString::fromLatin1(name), bundle);
        return self;
    }

    QPointer<QLabel> m_nameLabel;
    int loads = 0;
    int goes = 0;
    int layouts = 0;
    QSize sizeAtLayout;

protected:
    Panel()
    {
        outlets.bind("nameLabel", &m_nameLabel);
        actions.bind("goAction", [this] { ++goes; });
    }

    void viewDidLoad() override
    {
        ++loads;
        EXPECT_TRUE(isViewLoaded());
        EXPECT_TRUE(view());
    }

    void viewWillLayout() override
    {
        ++layouts;
        sizeAtLayout = view()->size();
    }
};

TEST(ViewController, loadsItsViewOnceWhenItIsAskedFor)
{
    const auto panel = Panel::initWithNibName("Plain", tests::forms());
    EXPECT_FALSE(panel->isViewLoaded());
    EXPECT_EQ(panel->loads, 0);

    QWidget* view = panel->view();

    ASSERT_NE(view, nullptr);
    EXPECT_EQ(panel->view(), view);
    EXPECT_EQ(panel->loads, 1);
    EXPECT_TRUE(panel->m_nameLabel);
    EXPECT_TRUE(panel->interfaceProblems().isEmpty());
}

TEST(ViewController, withoutABundleLoadsTheHostsFile)
{
    const auto panel = Panel::initWithNibName("Plain", std::nullopt);

    EXPECT_EQ(panel->view()->objectName(), QStringLiteral("Plain"));
}

TEST(ViewController, hasAnEmptyViewWhenItsFileIsMissing)
{
    const tests::LogCapture log;
    const auto panel = Panel::initWithNibName("Form", std::nullopt);

    ASSERT_NE(panel->view(), nullptr);
    EXPECT_TRUE(subviews(panel->view()).isEmpty());
    EXPECT_EQ(panel->loads, 1);
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(ViewController, isToldBeforeEachLayout)
{
    const auto panel = Panel::initWithNibName("Plain", tests::forms());
    QWidget superview;
    addSubview(&superview, panel->view());
    panel->view()->resize(200, 150);

    superview.show();
    EXPECT_GE(panel->layouts, 1);
    EXPECT_EQ(panel->sizeAtLayout, QSize(200, 150));

    panel->layouts = 0;
    panel->view()->resize(300, 250);
    EXPECT_EQ(panel->layouts, 1);
    EXPECT_EQ(panel->sizeAtLayout, QSize(300, 250));
}

TEST(ViewController, knowsTheWindowItsViewStandsIn)
{
    const auto panel = Panel::initWithNibName("Plain", tests::forms());
    EXPECT_EQ(panel->window(), nullptr);
    EXPECT_FALSE(panel->isViewLoaded());
    const auto window = Window::create(QString(), new QWidget);

    addSubview(window->contentView(), panel->view());

    EXPECT_EQ(panel->window(), window);
}

TEST(ViewController, hasNoViewOnceTheWindowItWasMovedIntoIsGone)
{
    const auto panel = Panel::initWithNibName("Plain", tests::forms());
    {
        QWidget superview;
        addSubview(&superview, panel->view());
    }

    EXPECT_EQ(panel->view(), nullptr);
    EXPECT_EQ(panel->window(), nullptr);
    EXPECT_EQ(panel->loads, 1);
}

TEST(ViewController, keepsTheObjectItStandsFor)
{
    const auto panel = Panel::initWithNibName("Plain", tests::forms());
    EXPECT_FALSE(panel->representedObject().isValid());

    panel->setRepresentedObject(3);

    EXPECT_EQ(panel->representedObject().toInt(), 3);
}

TEST(ViewController, takesItsViewAlong)
{
    auto panel = Panel::initWithNibName("Plain", tests::forms());
    QWidget superview;
    const QPointer<QWidget> view = panel->view();
    addSubview(&superview, view);

    panel.reset();

    EXPECT_FALSE(view);
}

} // namespace
