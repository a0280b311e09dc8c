#include "download/JAListAttachedFilesWindow.h"

#include "platform/foundation/values/DateFormatter.h"
#include "platform/toolkit/views/ElidedLabel.h"
#include "platform/toolkit/views/View.h"
#include "tests/download/DownloadTest.h"

#include <QBoxLayout>
#include <QScrollBar>
#include <QTimeZone>
#include <QtTest/QTest>

#include <algorithm>
#include <unicode/uloc.h>

namespace {

using testing::ElementsAre;
using tests::attachmentNamed;
using tests::attachmentsNamed;
using tests::cellAtRow;
using tests::shownTitles;

JAListAttachedFilesWindow::Attachments numbered(int count)
{
    JAListAttachedFilesWindow::Attachments attachments;
    attachments.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        attachments.push_back(attachmentNamed(QStringLiteral("%1.tessaloom").arg(i)));
    return attachments;
}

class JAListAttachedFilesWindowListTest : public testing::Test
{
protected:
    JAListAttachedFilesWindowListTest()
    {
        parent->beginSheet(list->window(), [this](int code) { returnCode = code; });
        tests::drainMainQueue();
        log.clear();
    }

    void show(const JAListAttachedFilesWindow::Attachments& attachments)
    {
        log.clear();
        list->setAttachments(attachments);
        list->reload();
        tests::drainMainQueue();
    }

    void showOne(const QJsonObject& attachment) { show({tests::attachment(attachment)}); }

    JAAttachedCell& cell(qint64 row = 0) const
    {
        auto* found = cellAtRow(*list, row);
        EXPECT_NE(found, nullptr);
        return *found;
    }

    QString sizeShownOf(qint64 bytes)
    {
        showOne({{QStringLiteral("size"), bytes}});
        return cell().sizeLabel()->text();
    }

    tests::LogCapture log;
    std::optional<int> returnCode;
    const std::shared_ptr<tljira::Window> parent = tests::shownWindow();
    std::shared_ptr<JAListAttachedFilesWindow> list = JAListAttachedFilesWindow::init();
};

// The states.

TEST_F(JAListAttachedFilesWindowListTest, showsTheEmptyViewWithoutAttachments)
{
    const QRectF before = list->window()->frame();
    show({});
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("self.attachments.count ::: 0")));
    EXPECT_TRUE(list->noDataView()->isVisible());
    EXPECT_FALSE(list->wrapperTableView()->isVisible());
    EXPECT_FALSE(list->downloadView()->isVisible());
    EXPECT_EQ(list->window()->frame(), QRectF(before.x(), before.bottom() - 200, before.width(), 200));
}

TEST_F(JAListAttachedFilesWindowListTest, showsTheListWithOneAttachment)
{
    show({});
    const QRectF before = list->window()->frame();
    show(attachmentsNamed({QStringLiteral("plan.tessaloom")}));
    EXPECT_THAT(log.lines(), ElementsAre(QStringLiteral("self.attachments.count ::: 1")));
    EXPECT_TRUE(list->wrapperTableView()->isVisible());
    EXPECT_FALSE(list->noDataView()->isVisible());
    EXPECT_FALSE(list->downloadView()->isVisible());
    EXPECT_EQ(list->window()->frame(), QRectF(before.x(), before.bottom() - 350, before.width(), 350));
    EXPECT_THAT(shownTitles(*list), ElementsAre(QStringLiteral("plan.tessaloom")));
}

TEST_F(JAListAttachedFilesWindowListTest, aReloadLeavesTheDownloadingState)
{
    show(attachmentsNamed({QStringLiteral("a")}));
    list->setActualView(list->downloadView());
    EXPECT_TRUE(list->downloadView()->isVisible());
    EXPECT_FALSE(list->wrapperTableView()->isVisible());
    EXPECT_EQ(list->window()->frame().height(), 200);
    list->reload();
    EXPECT_FALSE(list->downloadView()->isVisible());
    EXPECT_TRUE(list->wrapperTableView()->isVisible());
    EXPECT_EQ(list->window()->frame().height(), 350);
}

TEST_F(JAListAttachedFilesWindowListTest, theSheetCanBeLeftFromEveryState)
{
    for (const int count : {0, 1}) {
        show(numbered(count));
        EXPECT_NE(tests::closeButton(*list->window()), nullptr);
    }
    list->setActualView(list->downloadView());
    EXPECT_NE(tests::closeButton(*list->window()), nullptr);
}

TEST_F(JAListAttachedFilesWindowListTest, theCloseButtonEndsTheSheet)
{
    show(numbered(1));
    tests::ui::click(tests::closeButton(*list->window()));
    EXPECT_EQ(returnCode, 0);
    EXPECT_FALSE(list->window()->isVisible());
}

TEST_F(JAListAttachedFilesWindowListTest, escapeEndsTheSheet)
{
    show(numbered(1));
    QTest::keyClick(list->window()->widget(), Qt::Key_Escape);
    ASSERT_TRUE(tests::waitUntil([this] { return returnCode.has_value(); }));
    EXPECT_EQ(returnCode, 0);
}

TEST_F(JAListAttachedFilesWindowListTest, namesNoIssueUnlessItIsToldOne)
{
    auto* title = tljira::findView<QLabel>(list->view(), "listTitle");
    show(numbered(1));
    EXPECT_FALSE(title->isVisible());
    show({});
    EXPECT_EQ(tljira::text(QPointer(tljira::findView<QLabel>(list->view(), "noDataLabel"))),
              QStringLiteral("This issue has no files to download."));
    list->setIssueKey(QStringLiteral("ABC-7"));
    show(numbered(1));
    EXPECT_TRUE(title->isVisible());
}

TEST_F(JAListAttachedFilesWindowListTest, cutsOffAKeyThatIsFarTooLong)
{
    list->setIssueKey(QStringLiteral("  ABC\n1 ") + QString(500, u'x'));
    const QString title = tljira::text(QPointer(tljira::findView<QLabel>(list->view(), "listTitle")));
    EXPECT_EQ(title, QStringLiteral("Documents of ABC 1 ") + QString(34, u'x') + u'…');
    EXPECT_EQ(list->issueKey()->size(), 508);
}

TEST_F(JAListAttachedFilesWindowListTest, theListHasItsRoomHoweverLowTheOtherStatesAre)
{
    const QLayout* layout = list->wrapperTableView()->layout();
    show(numbered(3));
    show({});
    show(numbered(3));
    EXPECT_EQ(layout->contentsMargins(), QMargins(20, 18, 20, 18));
    EXPECT_EQ(layout->spacing(), 12);
}

TEST_F(JAListAttachedFilesWindowListTest, thePictureOfTheEmptyViewGivesWayToALargeFont)
{
    auto* picture = tljira::findView<QWidget>(list->view(), "noDataPicture");
    show({});
    EXPECT_TRUE(picture->isVisible());
    QFont font = list->view()->font();
    font.setPointSize(26);
    list->view()->setFont(font);
    show({});
    EXPECT_FALSE(picture->isVisible());
    EXPECT_EQ(list->window()->frame().height(), 200);
}

// Keys and the mouse.

TEST_F(JAListAttachedFilesWindowListTest, theFirstRowIsSelectedAndHasTheKeyboard)
{
    show(numbered(3));
    EXPECT_EQ(list->tableView()->selectedRow(), 0);
    EXPECT_TRUE(tests::waitUntil([this] { return list->tableView()->hasFocus(); }));
}

TEST_F(JAListAttachedFilesWindowListTest, anotherListBeginsWithItsFirstRow)
{
    show(numbered(3));
    QTest::keyClick(list->tableView(), Qt::Key_Down);
    EXPECT_EQ(list->tableView()->selectedRow(), 1);
    show(numbered(4));
    EXPECT_EQ(list->tableView()->selectedRow(), 0);
}

// The cells.

TEST_F(JAListAttachedFilesWindowListTest, showsDateAndSizeQuieterThanTheName)
{
    show(tests::attachmentsNamed({QStringLiteral("plan.tessaloom")}));
    const auto colorOf = [](const QLabel* label) { return label->palette().color(label->foregroundRole()); };
    const QColor quiet = cell().palette().color(QPalette::PlaceholderText);
    EXPECT_EQ(colorOf(cell().dateLabel()), quiet);
    EXPECT_EQ(colorOf(cell().sizeLabel()), quiet);
    EXPECT_NE(colorOf(cell().titleLabel()), quiet);
}

TEST_F(JAListAttachedFilesWindowListTest, listsTheAttachmentsInTheirOrder)
{
    const QStringList names = {QStringLiteral("b.tessaloom"), QStringLiteral("a.png"), QStringLiteral("c")};
    show(attachmentsNamed(names));
    EXPECT_EQ(shownTitles(*list), names);
}

TEST_F(JAListAttachedFilesWindowListTest, aCellKnowsItsAttachment)
{
    const auto attachments = attachmentsNamed({QStringLiteral("a"), QStringLiteral("b")});
    show(attachments);
    EXPECT_EQ(cell(1).attachmetn(), attachments[1]);
    EXPECT_EQ(cell(1).row(), 0);
    EXPECT_EQ(cell(1).identifier(), QStringLiteral("jaAttachedCell"));
    EXPECT_EQ(cell(1).downloadButton()->property("tag").toLongLong(), 1);
}

TEST_F(JAListAttachedFilesWindowListTest, showsSizesInMegabytesOf1024Times1024Bytes)
{
    EXPECT_EQ(sizeShownOf(0), QStringLiteral("0.00 MB"));
    EXPECT_EQ(sizeShownOf(2048), QStringLiteral("0.00 MB"));
    EXPECT_EQ(sizeShownOf(3 * 512 * 1024), QStringLiteral("1.50 MB"));
    EXPECT_EQ(sizeShownOf(10 * 1024 * 1024), QStringLiteral("10.00 MB"));
    EXPECT_EQ(sizeShownOf(qint64(5) << 40), QStringLiteral("5242880.00 MB"));
}

TEST_F(JAListAttachedFilesWindowListTest, showsDatesInTheUsersMediumStyle)
{
    showOne({{QStringLiteral("created"), QStringLiteral("2017-03-14T10:22:33.123+0100")}});
    const QString expected = tljira::DateFormatter::withMediumStyle().stringFromDate(
        QDateTime(QDate(2017, 3, 14), QTime(9, 22, 33, 123), QTimeZone::utc()));
    EXPECT_EQ(cell().dateLabel()->text(), expected);
    EXPECT_TRUE(expected.contains(QStringLiteral("2017")));
}

TEST_F(JAListAttachedFilesWindowListTest, showsDatesInTheLanguageOfTheMomentAtEveryReload)
{
    const auto speak = [](const char* locale) {
        UErrorCode status = U_ZERO_ERROR;
        uloc_setDefault(locale, &status);
        ASSERT_TRUE(U_SUCCESS(status));
    };
    speak("en_US");
    showOne({{QStringLiteral("created"), QStringLiteral("2017-03-14T10:22:33.123+0100")}});
    EXPECT_THAT(cell().dateLabel()->text().toStdString(), testing::StartsWith("Mar 14, 2017, "));
    speak("de_DE");
    list->reload();
    tests::drainMainQueue();
    EXPECT_THAT(cell().dateLabel()->text().toStdString(), testing::StartsWith("14.03.2017, "));
}

TEST_F(JAListAttachedFilesWindowListTest, leavesTheDateEmptyWhereItIsNone)
{
    const auto created = [](const char* text) {
        return tests::attachment({{QStringLiteral("created"), QString::fromUtf8(text)}});
    };
    show({created("2017-03-14T10:22:33.123+0100"), created("yesterday"), created("2017-13-14T10:22:33.123+0100"),
          created("2017-03-15T10:22:33.123+0100")});
    EXPECT_NE(cell(0).dateLabel()->text(), QString());
    EXPECT_EQ(cell(1).dateLabel()->text(), QString());
    EXPECT_EQ(cell(2).dateLabel()->text(), QString());
    EXPECT_NE(cell(3).dateLabel()->text(), QString());
}

TEST_F(JAListAttachedFilesWindowListTest, showsAnAttachmentThatHasNothing)
{
    showOne({});
    EXPECT_EQ(cell().titleLabel()->text(), QStringLiteral("(null)"));
    EXPECT_EQ(cell().sizeLabel()->text(), QStringLiteral("0.00 MB"));
    EXPECT_EQ(cell().dateLabel()->text(), QString());
}

TEST_F(JAListAttachedFilesWindowListTest, tellsTheButtonsApartForThoseWhoCannotSeeThem)
{
    show(attachmentsNamed({QStringLiteral("a & b.tessaloom"), QStringLiteral("%1.tessaloom")}));
    EXPECT_EQ(cell(0).downloadButton()->accessibleName(), QStringLiteral("Download a & b.tessaloom"));
    EXPECT_EQ(cell(1).downloadButton()->accessibleName(), QStringLiteral("Download %1.tessaloom"));
}

TEST_F(JAListAttachedFilesWindowListTest, shortensLongNamesInTheMiddleAndKeepsThemAsToolTip)
{
    const QString name = QString(200, u'x') + QStringLiteral(".tessaloom");
    show(attachmentsNamed({name}));
    EXPECT_EQ(cell().titleLabel()->text(), name);
    EXPECT_LE(cell().titleLabel()->geometry().right(), cell().sizeLabel()->geometry().left());
    EXPECT_LE(cell().downloadButton()->geometry().right(), cell().width());
}

TEST_F(JAListAttachedFilesWindowListTest, linesUpSizesAndButtons)
{
    show({tests::attachment({{QStringLiteral("size"), 1}}),
          tests::attachment({{QStringLiteral("filename"), QString(80, u'x')}, {QStringLiteral("size"), 734003200}})});
    EXPECT_EQ(cell(0).sizeLabel()->geometry().right(), cell(1).sizeLabel()->geometry().right());
    EXPECT_EQ(cell(0).downloadButton()->geometry(), cell(1).downloadButton()->geometry());
    EXPECT_TRUE(cell(0).sizeLabel()->alignment().testFlag(Qt::AlignRight));
}

TEST_F(JAListAttachedFilesWindowListTest, rowsAreAsHighAsTheirTextsInALargeFont)
{
    QFont font = list->view()->font();
    font.setPointSize(22);
    list->view()->setFont(font);
    showOne({{QStringLiteral("filename"), QStringLiteral("gyp.tessaloom")},
             {QStringLiteral("size"), 24 << 20},
             {QStringLiteral("created"), QStringLiteral("2017-03-14T10:22:33.123+0100")}});
    for (const QLabel* label : {cell().titleLabel(), cell().sizeLabel(), cell().dateLabel()}) {
        const int needed =
            label->hasHeightForWidth() ? label->heightForWidth(label->width()) : label->fontMetrics().height();
        EXPECT_GE(label->height(), needed) << label->text().toStdString();
        EXPECT_GE(cell().rect().bottom(), label->mapTo(&cell(), label->rect().bottomLeft()).y());
    }
    EXPECT_GE(cell().sizeLabel()->width(),
              cell().sizeLabel()->fontMetrics().horizontalAdvance(QStringLiteral("24.00 MB")));
    EXPECT_GE(cell().downloadButton()->height(), cell().downloadButton()->sizeHint().height());
}

TEST_F(JAListAttachedFilesWindowListTest, sizeAndButtonStandBelowTheNameWhereItWouldHaveNoRoomBesideThem)
{
    const auto isBeside = [this] {
        return cell().sizeLabel()->mapTo(&cell(), QPoint()).x() >= cell().titleLabel()->geometry().right() &&
               cell().sizeLabel()->mapTo(&cell(), QPoint()).y() < cell().dateLabel()->geometry().bottom();
    };
    const QJsonObject json{{QStringLiteral("filename"), QStringLiteral("plan.tessaloom")},
                           {QStringLiteral("created"), QStringLiteral("2017-03-14T10:22:33.123+0100")}};
    showOne(json);
    EXPECT_TRUE(isBeside());
    QFont font = list->view()->font();
    font.setPointSize(22);
    list->view()->setFont(font);
    showOne(json);
    EXPECT_FALSE(isBeside());
    EXPECT_GT(cell().sizeLabel()->mapTo(&cell(), QPoint()).y(), cell().dateLabel()->geometry().bottom());
}

TEST_F(JAListAttachedFilesWindowListTest, aNameHasRoomForTwentyLettersBesideSizeAndButtonOrStandsAbove)
{
    showOne({{QStringLiteral("filename"), QStringLiteral("plan.tessaloom")}});
    JAAttachedCell& row = cell();
    auto* layout = qobject_cast<QBoxLayout*>(row.layout());
    ASSERT_NE(layout, nullptr);
    const auto* besideName = layout->itemAt(layout->count() - 1)->layout();
    ASSERT_NE(besideName, nullptr);
    const auto* title = qobject_cast<tljira::ElidedLabel*>(row.titleLabel());
    ASSERT_NE(title, nullptr);
    const int besides = row.sizeLabel()->fontMetrics().horizontalAdvance(QStringLiteral("000.00 MB")) +
                        row.downloadButton()->sizeHint().width() + 3 * layout->spacing();
    const int letters = 20 * title->fontMetrics().averageCharWidth();
    const int least = layout->contentsMargins().left() + layout->contentsMargins().right() + besides + letters;
    for (int time = 0; time < 2; ++time) {
        row.resize(least - 1, row.height());
        EXPECT_EQ(layout->direction(), QBoxLayout::TopToBottom);
        EXPECT_EQ(besideName->spacing(), 4);
        EXPECT_EQ(title->maximumLines(), 1);
        row.resize(least, row.height());
        EXPECT_EQ(layout->direction(), QBoxLayout::LeftToRight);
        EXPECT_EQ(besideName->spacing(), layout->spacing());
        EXPECT_EQ(title->maximumLines(), 2);
        const int heightBelow = row.heightForWidth(least - 1);
        row.resize(least - 1, row.height());
        EXPECT_EQ(row.heightForWidth(least - 1), heightBelow);
    }
}

TEST_F(JAListAttachedFilesWindowListTest, aLongNameTakesASecondLine)
{
    show({attachmentNamed(QStringLiteral("twill and herringbone with corrections.tessaloom"))});
    EXPECT_GT(cell().titleLabel()->height(), cell().titleLabel()->fontMetrics().lineSpacing() * 3 / 2);
}

// Many rows, and rows of old.

TEST_F(JAListAttachedFilesWindowListTest, makesCellsForTheRowsInSightOnly)
{
    show(numbered(100'000));
    EXPECT_EQ(list->tableView()->numberOfRows(), 100'000);
    const auto fitting = list->tableView()->viewport()->height() / cell().height() + 1;
    EXPECT_LE(list->tableView()->findChildren<JAAttachedCell*>().size(), fitting + 3);
    list->tableView()->scrollRowToVisible(99'999);
    EXPECT_EQ(cell(99'999).titleLabel()->text(), QStringLiteral("99999.tessaloom"));
    EXPECT_LE(list->tableView()->findChildren<JAAttachedCell*>().size(), fitting + 3);
}

TEST_F(JAListAttachedFilesWindowListTest, aHundredThousandAttachmentsOpenWithTheCellsOfTwenty)
{
    show(numbered(20));
    const auto cellsOfTwenty = list->tableView()->findChildren<JAAttachedCell*>().size();
    list->setAttachments(numbered(100'000));
    list->reload();
    list->view()->repaint();
    EXPECT_EQ(cell().titleLabel()->text(), QStringLiteral("0.tessaloom"));
    EXPECT_EQ(list->tableView()->findChildren<JAAttachedCell*>().size(), cellsOfTwenty);
}

TEST_F(JAListAttachedFilesWindowListTest, keepsItsRowsUntilItIsReloaded)
{
    show(numbered(3));
    const auto other = numbered(1);
    log.clear();
    list->setAttachments(other);
    tests::drainMainQueue();
    EXPECT_EQ(shownTitles(*list).size(), 3);
    EXPECT_THAT(log.lines(), testing::IsEmpty());
    list->reload();
    EXPECT_EQ(shownTitles(*list).size(), 1);
}

TEST_F(JAListAttachedFilesWindowListTest, rowsWhoseAttachmentsAreGoneHaveNoCell)
{
    show(numbered(1000));
    list->setAttachments(numbered(2));
    list->tableView()->scrollRowToVisible(900);
    EXPECT_EQ(cellAtRow(*list, 900), nullptr);
    list->tableView()->scrollRowToVisible(0);
    EXPECT_EQ(cell(1).titleLabel()->text(), QStringLiteral("1.tessaloom"));
}

TEST_F(JAListAttachedFilesWindowListTest, aButtonWhoseAttachmentIsGoneDoesNothing)
{
    show(numbered(2));
    list->setAttachments(numbered(1));
    log.clear();
    tests::ui::click(cell(1).downloadButton());
    EXPECT_EQ(log.lines(),
              QStringList({QStringLiteral("Download Action 1"), QStringLiteral("there is no attachment 1 any more")}));
    EXPECT_EQ(list->path(), std::nullopt);
    EXPECT_TRUE(list->wrapperTableView()->isVisible());
}

TEST_F(JAListAttachedFilesWindowListTest, aTableThatAHostHasTakenAsksNobodyOnceItIsGone)
{
    show(numbered(30));
    QWidget host;
    auto* table = list->tableView();
    table->setParent(&host);
    list.reset();
    tests::drainMainQueue();
    ASSERT_EQ(table->dataSource(), nullptr);
    table->reloadData();
    EXPECT_EQ(table->numberOfRows(), 0);
}

TEST_F(JAListAttachedFilesWindowListTest, goesAwayWhileItIsASheet)
{
    show(numbered(30));
    std::weak_ptr<JAListAttachedFilesWindow> weak = list;
    list.reset();
    tests::drainMainQueue();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(returnCode, tljira::ModalResponse::Stop);
    EXPECT_EQ(parent->attachedSheet(), nullptr);
}

} // namespace
