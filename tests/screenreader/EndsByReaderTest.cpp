#include "tests/screenreader/ReaderHands.h"
#include "tests/screenreader/ReaderTest.h"
#include "tests/states/Scene.h"

#include <algorithm>
#include <chrono>

namespace {

using namespace tests;
using namespace std::chrono_literals;
using standin::Fault;
using standin::Match;
using testing::ElementsAre;

/// What is told without being asked for: how far a transfer is, and how things end.
class EndsByReaderTest : public ReaderTest
{
protected:
    EndsByReaderTest() { reader.windows(); }

    ReaderHands hands{user};
    Scene scene{hands, server, [this] { logIn(); }};
};

TEST_F(EndsByReaderTest, hearsThatALoginIsRefused)
{
    scene.loginRefused();
    EXPECT_THAT(alerts(), ElementsAre(QStringLiteral("Incorrect login or password")));
}

TEST_F(EndsByReaderTest, hearsThatAnUploadIsDone)
{
    scene.uploadDone();
    EXPECT_THAT(alerts(), ElementsAre(QStringLiteral("Attached to ABC-1")));
    EXPECT_EQ(find({Told::Label}, QStringLiteral("DONE")).name, QStringLiteral("DONE"));
}

TEST_F(EndsByReaderTest, hearsThatAnUploadHasFailedAndThenThatTheDocumentIsGone)
{
    scene.uploadFailed();
    const QStringList heard = alerts();
    ASSERT_EQ(heard.size(), 1) << heard.join(QStringLiteral(" | ")).toStdString();
    EXPECT_TRUE(heard[0].startsWith(QStringLiteral("Error\nThe operation couldn’t be completed.")));
    EXPECT_TRUE(heard[0].contains(QStringLiteral("Attachments are disabled")));

    hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return !scene.window()->attachedSheet(); }));
    EXPECT_THAT(alerts(),
                ElementsAre(QStringLiteral("The document is gone. Close this window and attach the document again.")));
}

TEST_F(EndsByReaderTest, hearsThatADownloadIsDone)
{
    scene.downloadDone();
    EXPECT_THAT(alerts(), ElementsAre(QStringLiteral("Downloaded")));
}

TEST_F(EndsByReaderTest, hearsThatADownloadHasFailed)
{
    scene.downloadFailed();
    EXPECT_THAT(alerts(), ElementsAre(QStringLiteral("The network connection was lost.")));
}

TEST_F(EndsByReaderTest, followsTheSelectionOfAList)
{
    scene.list();
    auto* second = scene.download()->bodyViewController()->jaListAttachedWindow()->tableView()->cellAtRow(1);
    const QString name = qobject_cast<JAAttachedCell*>(second)->titleLabel()->text();
    hands.press(Qt::Key_Down);
    QStringList rows;
    EXPECT_TRUE(waitUntil([&] {
        for (const News& news : reader.takeNews()) {
            const Told told = reader.read(news.path);
            if (news.kind == News::Kind::Focused && told.role == Told::ListItem)
                rows.append(told.name.section(QStringLiteral(", "), 0, 0));
        }
        return !rows.isEmpty() && rows.last() == name;
    })) << rows.join(u' ').toStdString();
}

// One value each time, in one direction.
TEST_F(EndsByReaderTest, hearsOfADownloadOnceASecond)
{
    scene.list();
    server.misbehave(Match::on("*/secure/attachment/*"), Fault().drip(1, 1000ms));
    reader.takeNews();
    const auto begin = std::chrono::steady_clock::now();
    hands.press(Qt::Key_Return);
    QList<double> values;
    const auto listen = [&] {
        for (const News& news : reader.takeNews()) {
            if (news.kind == News::Kind::ValueChanged)
                values.append(reader.value(news.path));
        }
        return scene.download()->bodyViewController()->jaListAttachedWindow()->isDone();
    };
    ASSERT_TRUE(waitUntil(listen));
    const auto seconds = (std::chrono::steady_clock::now() - begin) / 1s;
    EXPECT_GE(values.size(), 2);
    EXPECT_LE(values.size(), seconds + 1);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
}

} // namespace
