#include "platform/foundation/loading/curl/AnswerHead.h"

#include <gtest/gtest.h>

namespace {

using tljira::AnswerHead;

AnswerHead headOf(std::initializer_list<const char*> lines)
{
    AnswerHead head;
    for (const char* line : lines)
        EXPECT_TRUE(head.appendLine(QByteArrayView(line))) << line;
    return head;
}

TEST(AnswerHead, collectsItsFieldsInOrder)
{
    const AnswerHead head =
        headOf({"HTTP/1.1 200 OK\r\n", "Content-Type: text/html\r\n", "X-Empty:\r\n", "X-Colon: a:b \r\n", "\r\n"});
    using Field = std::pair<QString, QString>;
    const std::vector<Field> expected = {{QStringLiteral("Content-Type"), QStringLiteral("text/html")},
                                         {QStringLiteral("X-Empty"), QString::fromLatin1("")},
                                         {QStringLiteral("X-Colon"), QStringLiteral("a:b")}};
    EXPECT_EQ(head.fields(), expected);
    EXPECT_TRUE(head.isComplete());
}

TEST(AnswerHead, findsAFieldWithoutCase)
{
    const AnswerHead head = headOf({"HTTP/1.1 200 OK\r\n", "content-ENCODING: gzip\r\n"});
    EXPECT_EQ(head.valueOf("Content-Encoding"), QByteArray("gzip"));
    EXPECT_EQ(head.valueOf("Location"), QByteArray());
    EXPECT_FALSE(head.isComplete());
}

TEST(AnswerHead, forgetsAnInterimAnswer)
{
    const AnswerHead head =
        headOf({"HTTP/1.1 103 Early Hints\r\n", "Link: x\r\n", "\r\n", "HTTP/1.1 200 OK\r\n", "A: b\r\n"});
    EXPECT_EQ(head.fields().size(), 1U);
    EXPECT_FALSE(head.isComplete());
}

TEST(AnswerHead, noticesCookies)
{
    EXPECT_FALSE(headOf({"HTTP/1.1 200 OK\r\n", "X-Set-Cookie: a=b\r\n"}).setsCookies());
    EXPECT_TRUE(headOf({"HTTP/1.1 200 OK\r\n", "set-cookie: a=b\r\n"}).setsCookies());
}

TEST(AnswerHead, passesOverLinesThatAreNoFields)
{
    EXPECT_TRUE(headOf({"HTTP/1.1 200 OK\r\n", "no colon\r\n", ": no name\r\n"}).fields().empty());
}

TEST(AnswerHead, refusesToGrowBeyondAllReason)
{
    AnswerHead head;
    const QByteArray line = "X: " + QByteArray(1024 - 5, 'x') + "\r\n";
    int taken = 0;
    while (taken < 10000 && head.appendLine(line))
        ++taken;
    EXPECT_EQ(taken, 256);
    EXPECT_TRUE(head.isTooLarge());
}

TEST(AnswerHead, countsInterimAnswersToo)
{
    AnswerHead head;
    int taken = 0;
    while (taken < 100'000 && head.appendLine("HTTP/1.1 103 Early Hints\r\n") && head.appendLine("\r\n"))
        ++taken;
    EXPECT_LT(taken, 20'000);
    EXPECT_TRUE(head.isTooLarge());
}

TEST(AnswerHead, isNotTooLargeWithManyFields)
{
    AnswerHead head;
    for (int field = 0; field < 2000; ++field)
        ASSERT_TRUE(head.appendLine("X-Field-" + QByteArray::number(field) + ": a value\r\n"));
    EXPECT_FALSE(head.isTooLarge());
    EXPECT_EQ(head.fields().size(), 2000U);
}

} // namespace
