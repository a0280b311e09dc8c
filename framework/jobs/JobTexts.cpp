#include "framework/jobs/JobTexts.h"

#include "client/tasks/TaskTexts.h"
#include "platform/toolkit/nib/InterfaceTexts.h"

namespace {

QString text(const char* source)
{
    return tljira::InterfaceTexts::shared().text("TLJiraJobs", source);
}

} // namespace

QString JobTexts::notAName()
{
    return text(client::texts::notAName);
}

QString JobTexts::noCopy()
{
    return text(client::texts::noCopy);
}

QString JobTexts::notWritten()
{
    return text(client::texts::notWritten);
}

QString JobTexts::notTheDocument()
{
    return text(client::texts::notTheDocument);
}

QString JobTexts::notKept()
{
    return text(client::texts::notKept);
}
