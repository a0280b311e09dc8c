#include "platform/foundation/settings/KeyGroup.h"

#include "platform/foundation/values/JSON.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using tljira::KeyGroup;

/// The values of a text such as "place=A value=1 name=2"; "key=-" stands for a key that is to be removed.
QJsonObject values(const char* text)
{
    QJsonObject object;
    for (const QString& pair : QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts)) {
        const QString value = pair.section(u'=', 1);
        object.insert(pair.section(u'=', 0, 0), value == u"-" ? QJsonValue() : QJsonValue(value));
    }
    return object;
}

bool isSameLetter(const QJsonValue& one, const QJsonValue& other)
{
    return one.toString().toLower() == other.toString().toLower();
}

/// A process that saw `loaded` in the file at first.
KeyGroup group(const char* loaded)
{
    KeyGroup made(QStringLiteral("place"), {QStringLiteral("value"), QStringLiteral("name")}, isSameLetter);
    made.noteTakenUp(values(loaded));
    return made;
}

/// What a process writes that has loaded the first, sees the second, of which it has set the third, over the fourth.
QJsonObject written(const char* loaded, const char* mine, const char* unsaved, const char* inFile)
{
    KeyGroup process = group(loaded);
    for (const QString& key : values(unsaved).keys())
        process.noteSet(key, values(mine));
    return process.written(values(inFile), values(mine), values(unsaved));
}

TEST(KeyGroup, withoutKeysLeavesTheFileAsItIs)
{
    const KeyGroup none;
    EXPECT_EQ(none.written(values("a=1"), values("a=2"), values("a=2")), values("a=1"));
    EXPECT_EQ(none.seen(values("a=1"), values("a=2"), values("a=2")), values("a=1"));
}

TEST(KeyGroup, leavesWhatOthersWroteWhenNoneOfTheKeysWasSet)
{
    EXPECT_EQ(written("place=A value=1", "place=A value=1 other=x", "other=x", "place=B value=2"),
              values("place=B value=2"));
}

TEST(KeyGroup, writesAllOfAPlaceOverAnother)
{
    EXPECT_EQ(written("", "place=A value=1 name=N", "place=A value=1 name=N", "place=B value=2 name=M other=x"),
              values("place=A value=1 name=N other=x"));
    // The name was the same before: it is written nevertheless.
    EXPECT_EQ(written("place=A value=0 name=N", "place=A value=1 name=N", "value=1", "place=B value=2 name=M"),
              values("place=A value=1 name=N"));
}

TEST(KeyGroup, neverWritesMembersOfAnotherPlace)
{
    EXPECT_EQ(written("place=A value=1", "place=B value=1", "place=B", "place=A value=1"), values("place=B"));
    EXPECT_EQ(written("value=1", "place=B value=1", "place=B", "value=1"), values("place=B"));
}

TEST(KeyGroup, writesThemAgainWhenTheirPlaceReturns)
{
    EXPECT_EQ(written("place=A value=1", "place=a value=1", "place=a", "place=B"), values("place=a value=1"));
}

TEST(KeyGroup, leavesTheMembersThatTheFileHasOfThePlace)
{
    EXPECT_EQ(written("place=A value=1", "place=B value=1", "place=B", "place=b value=2"), values("place=B value=2"));
    EXPECT_EQ(written("place=A value=1", "place=a value=1", "place=a", "place=A value=2"), values("place=a value=2"));
}

TEST(KeyGroup, withoutAPlaceKeepsTheMembers)
{
    EXPECT_EQ(written("place=A value=1", "value=1", "place=-", "place=A value=1"), values("value=1"));
    EXPECT_EQ(written("", "value=1", "value=1", ""), values("value=1"));
}

TEST(KeyGroup, writesNoMembersWhoseOwnerIsToldToBeElsewhere)
{
    KeyGroup process = group("place=A value=1");
    process.noteOwner(QStringLiteral("B"));
    EXPECT_EQ(process.written(values("place=A value=1"), values("place=A value=2"), values("value=2")),
              values("place=A value=1"));
    EXPECT_EQ(process.written(values("place=C value=3"), values("place=A value=2"), values("value=2")),
              values("place=A"));
}

TEST(KeyGroup, takesUpOtherMembersOfTheSamePlaceOnly)
{
    const KeyGroup process = group("place=A value=1");
    const QJsonObject mine = values("place=A value=1");
    EXPECT_EQ(process.seen(values("place=a value=2 x=y"), mine, {}), values("place=a value=2 x=y"));
    EXPECT_EQ(process.seen(values("place=A"), mine, {}), values("place=A"));
    EXPECT_EQ(process.seen(values("place=B value=2 x=y"), mine, {}), values("place=A value=1 x=y"));
    EXPECT_EQ(process.seen(values("value=2"), mine, {}), mine);
}

TEST(KeyGroup, takesUpEverythingWhereItHasNoPlace)
{
    EXPECT_EQ(group("value=1").seen(values("place=B value=2"), values("value=1"), {}), values("place=B value=2"));
}

TEST(KeyGroup, takesUpNothingBeforeItsOwnIsWritten)
{
    const KeyGroup process = group("place=A value=1");
    EXPECT_EQ(process.seen(values("place=A value=3"), values("place=A value=2"), values("value=2")),
              values("place=A value=2"));
    EXPECT_EQ(group("").seen(values("place=A value=3"), {}, values("place=-")), QJsonObject());
}

TEST(KeyGroup, goesOnSeeingMembersThatAreInMemoryAlone)
{
    const KeyGroup process = group("place=A value=1");
    const QJsonObject mine = values("place=B value=1");
    EXPECT_EQ(process.seen(values("place=B"), mine, {}), mine);
    EXPECT_EQ(process.seen(values("place=B value=2"), mine, {}), values("place=B value=2"));
}

} // namespace
