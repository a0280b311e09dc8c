#include "framework/jobs/JobTexts.h"

#include "platform/toolkit/nib/InterfaceTexts.h"

namespace {

QString text(const char* source)
{
    return tljira::InterfaceTexts::shared().text("TLJiraJobs", source);
}

} // namespace

QString JobTexts::noCopy()
{
    return text(QT_TRANSLATE_NOOP("TLJiraJobs", "The document could not be copied: %1"));
}

QString JobTexts::notWritten()
{
    return text(QT_TRANSLATE_NOOP("TLJiraJobs", "The program could not write it."));
}

QString JobTexts::notTheDocument()
{
    return text(
        QT_TRANSLATE_NOOP("TLJiraJobs", "The server sent something else than the document: %1 bytes instead of %2."));
}

QString JobTexts::notKept()
{
    return text(QT_TRANSLATE_NOOP("TLJiraJobs", "The document could not be put in its place: %1"));
}
