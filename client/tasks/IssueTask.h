#pragma once

#include "client/tasks/Task.h"

namespace client {

struct Answer;

/// A job that looks at an issue first.
class IssueTask : public Task
{
protected:
    using Task::Task;

    void start() override;
    virtual void issueArrived(const JAIssueObject& issue) = 0;

private:
    void askForIssue();
    void issueAnswered(const Answer& answer);
};

} // namespace client
