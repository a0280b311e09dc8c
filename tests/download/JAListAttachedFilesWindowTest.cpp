#include "download/JAListAttachedFilesWindow.h"

#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/PaletteColors.h"
#include "tests/download/DownloadTest.h"

#include <QApplication>

#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const auto failure = tljira::makeError(QStringLiteral("test"), 7, QStringLiteral("It did not work."));

/// A quieter text, or the line of an error or an end.
bool hasColorOfItsOwn(const QWidget* control)
{
    return control->property("textRole") == QStringLiteral("help") ||
           qobject_cast<const tljira::MessageLine*>(control) ||
           qobject_cast<const tljira::MessageLine*>(control->parentWidget());
}

class JAListAttachedFilesWindowTest : public testing::Test
{
protected:
    QString percent() const { return list->downloadPercent()->text(); }
    QString error() const { return list->downloadError()->text(); }
    int bar() const { return list->downloadProgressBar()->value(); }

    tests::LogCapture log;
    const std::shared_ptr<JAListAttachedFilesWindow> list = JAListAttachedFilesWindow::init();
};

TEST_F(JAListAttachedFilesWindowTest, isLoadedInsideInit)
{
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("JAListAttachedFilesWindow windowWillLoad"),
                                         QStringLiteral("JAListAttachedFilesWindow windowDidLoad")));
    EXPECT_TRUE(list->isWindowLoaded());
    EXPECT_EQ(list->window()->delegate().get(), list.get());
    EXPECT_EQ(list->tableView()->dataSource(), list.get());
    EXPECT_FALSE(list->isDone());
    EXPECT_EQ(list->path(), std::nullopt);
    EXPECT_THAT(list->attachments(), IsEmpty());
}

TEST_F(JAListAttachedFilesWindowTest, findsEverythingInItsInterfaceFile)
{
    EXPECT_THAT(list->interfaceProblems(), IsEmpty());
    EXPECT_EQ(list->window()->contentView(), list->view());
    EXPECT_EQ(list->downloadProgressBar()->minimum(), 0);
    EXPECT_EQ(list->downloadProgressBar()->maximum(), 100);
}

TEST_F(JAListAttachedFilesWindowTest, showsNothingOfADownloadBeforeThereIsOne)
{
    EXPECT_EQ(percent(), QString());
    EXPECT_EQ(error(), QString());
    EXPECT_EQ(bar(), 0);
}

TEST_F(JAListAttachedFilesWindowTest, logsThatItIsShown)
{
    log.clear();
    list->showWindow();
    EXPECT_TRUE(list->window()->isVisible());
    EXPECT_THAT(log.lines(), testing::Contains(QStringLiteral("JAListAttachedFilesWindow showWindow")));
}

TEST_F(JAListAttachedFilesWindowTest, standsOnOpaqueWhite)
{
    ASSERT_NE(tljira::Layer::layerOf(list->view()), nullptr);
    EXPECT_EQ(tljira::Layer::layerOf(list->view())->backgroundColor(), QColor(255, 255, 255, 255));
}

TEST_F(JAListAttachedFilesWindowTest, writesDarkOnWhiteInADarkApplicationToo)
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(0x35, 0x35, 0x35), QColor(0x20, 0x20, 0x20)));
    const auto inTheDark = JAListAttachedFilesWindow::init();
    const auto colorOf = [](const QWidget* control) { return control->palette().color(QPalette::WindowText); };
    int quieter = 0;
    for (const QWidget* control : inTheDark->view()->findChildren<QWidget*>()) {
        if (hasColorOfItsOwn(control)) {
            EXPECT_GE(tljira::contrast(colorOf(control), Qt::white), 4.5) << control->objectName().toStdString();
            ++quieter;
        } else {
            EXPECT_LT(colorOf(control).lightness(), 64) << control->objectName().toStdString();
        }
    }
    EXPECT_LT(quieter, 10);
    QApplication::setPalette(before);
}

// Progress.

TEST_F(JAListAttachedFilesWindowTest, showsTheWholePercentWhileBytesArrive)
{
    list->updateDownload(21, 50, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("42 %"));
    EXPECT_EQ(bar(), 42);
    EXPECT_EQ(error(), QString());
    EXPECT_FALSE(list->isDone());
}

TEST_F(JAListAttachedFilesWindowTest, drawsNothingOfAnUpdateBeforeTheWholeOfIt)
{
    std::vector<bool> isDrawn;
    QObject::connect(list->downloadProgressBar(), &QProgressBar::valueChanged, list->downloadView(),
                     [&] { isDrawn.push_back(list->downloadView()->updatesEnabled()); });
    list->updateDownload(21, 50, std::nullopt, false);
    EXPECT_THAT(isDrawn, testing::AllOf(testing::Not(IsEmpty()), testing::Each(false)));
    EXPECT_TRUE(list->downloadView()->updatesEnabled());
}

TEST_F(JAListAttachedFilesWindowTest, cutsOffTheFraction)
{
    list->updateDownload(999, 1000, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("99 %"));
    list->updateDownload(-999, 100000, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("0 %"));
}

TEST_F(JAListAttachedFilesWindowTest, roundsToSinglePrecisionBeforeItCutsOff)
{
    log.clear();
    // 100 / 97 * 97 is a little less than 100 in double precision.
    list->updateDownload(97, 97, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("100 %"));
    list->updateDownload(999'999'999, 1'000'000'000, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("100 %"));
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("percent:100.000000 total:97 bytes: 97 0"),
                                         QStringLiteral("percent:100.000000 total:1000000000 bytes: 999999999 0")));
}

TEST_F(JAListAttachedFilesWindowTest, countsAnUnknownSizeAsOneByte)
{
    log.clear();
    list->updateDownload(7, 0, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("700 %"));
    EXPECT_EQ(bar(), 100);
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("percent:700.000000 total:0 bytes: 7 0")));
}

TEST_F(JAListAttachedFilesWindowTest, showsMoreThanAHundredPercentOfASizeThatWasTooSmall)
{
    list->updateDownload(300, 200, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("150 %"));
    EXPECT_EQ(bar(), 100);
}

TEST_F(JAListAttachedFilesWindowTest, showsPercentsBeyondTheRangeOfTheBarsNumbers)
{
    list->updateDownload(qint64(1) << 40, 0, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("109951162777600 %"));
    EXPECT_EQ(bar(), 100);
}

TEST_F(JAListAttachedFilesWindowTest, takesThePercentThatNoNumberHoldsAsTheLowest)
{
    list->updateDownload(std::numeric_limits<qint64>::max(), 0, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("-9223372036854775808 %"));
    EXPECT_EQ(bar(), 0);
}

TEST_F(JAListAttachedFilesWindowTest, showsANegativeSizeAsItIs)
{
    list->updateDownload(50, -100, std::nullopt, false);
    EXPECT_EQ(percent(), QStringLiteral("-50 %"));
    EXPECT_EQ(bar(), 0);
}

TEST_F(JAListAttachedFilesWindowTest, saysDoneWithAFullBar)
{
    list->updateDownload(10, 400, failure, false);
    log.clear();
    list->updateDownload(100, 400, std::nullopt, true);
    EXPECT_EQ(percent(), QStringLiteral("DONE"));
    EXPECT_EQ(bar(), 100);
    EXPECT_EQ(error(), QString());
    EXPECT_TRUE(list->isDone());
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("percent:25.000000 total:400 bytes: 100 1")));
}

TEST_F(JAListAttachedFilesWindowTest, showsAnErrorUnderAFullBar)
{
    list->updateDownload(10, 400, std::nullopt, false);
    log.clear();
    list->updateDownload(0, 400, failure, false);
    EXPECT_EQ(error(), QStringLiteral("It did not work."));
    EXPECT_EQ(percent(), QString());
    EXPECT_EQ(bar(), 100);
    EXPECT_FALSE(list->isDone());
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JAListAttachedFilesWindowTest, anErrorOutweighsTheEnd)
{
    list->updateDownload(100, 100, failure, true);
    EXPECT_EQ(error(), QStringLiteral("It did not work."));
    EXPECT_FALSE(list->isDone());
}

TEST_F(JAListAttachedFilesWindowTest, staysDone)
{
    list->updateDownload(100, 100, std::nullopt, true);
    list->updateDownload(0, 100, failure, false);
    list->reload();
    EXPECT_TRUE(list->isDone());
}

TEST_F(JAListAttachedFilesWindowTest, takesErrorTextsLiterally)
{
    EXPECT_EQ(list->downloadError()->textFormat(), Qt::PlainText);
    EXPECT_TRUE(list->downloadError()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
}

TEST_F(JAListAttachedFilesWindowTest, printsViewsWithOneMoreDashForEachLevel)
{
    QWidget root;
    root.setObjectName(QStringLiteral("root"));
    QLabel first(&root);
    first.setObjectName(QStringLiteral("first"));
    QWidget second(&root);
    second.setObjectName(QStringLiteral("second"));
    QLabel inner(&second);
    inner.setObjectName(QStringLiteral("inner"));
    log.clear();
    list->printSubView(&root, QStringLiteral("+"));
    EXPECT_THAT(log.lines(),
                ElementsAre(QStringLiteral("+ <QWidget: root>"), QStringLiteral("-+ <QLabel: first>"),
                            QStringLiteral("-+ <QWidget: second>"), QStringLiteral("--+ <QLabel: inner>")));
}

TEST_F(JAListAttachedFilesWindowTest, logsNothingOfAViewThatIsMissing)
{
    log.clear();
    list->printSubView(nullptr, QStringLiteral("+"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JAListAttachedFilesWindowTest, cancelDoesNothingWhereItIsNoSheet)
{
    list->showWindow();
    list->cancalAction(nullptr);
    EXPECT_TRUE(list->window()->isVisible());
}

} // namespace
