#include "tests/client/tasks/TaskTest.h"
#include "tests/kit/RunProgram.h"

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;

class TaskProcessTest : public TaskTest
{
};

TEST_F(TaskProcessTest, endsOnceAndLeavesNothingWhenTheApplicationGoesWithoutQuitting)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(1 << 19)));
    const auto host = runProgram(QStringLiteral(TASK_HOST), {QString::number(server.port())});

    EXPECT_EQ(host.output, "done\ncancelled\n");
    EXPECT_EQ(host.status, 0) << host.error;
    EXPECT_EQ(temporaryItems(), QStringList());
}

TEST_F(TaskProcessTest, endsWithEachApplicationObjectThatGoesWithoutQuitting)
{
    const auto program = runProgram(QStringLiteral(SINGLE_END_HOST), {});

    EXPECT_EQ(program.output, "stopped\ntold\nstopped\ntold\n");
    EXPECT_EQ(program.status, 0) << program.error;
}

} // namespace
