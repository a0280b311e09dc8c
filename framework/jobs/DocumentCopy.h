#pragma once

#include "framework/TLJiraJobs.h"
#include "platform/foundation/os/FileLock.h"

#include <QFile>
#include <QString>

namespace jobs {

/// A document in a file, alone in a folder of the user's own that goes when this does.
class DocumentCopy
{
public:
    DocumentCopy() = default;
    ~DocumentCopy();
    DocumentCopy(const DocumentCopy&) = delete;
    DocumentCopy& operator=(const DocumentCopy&) = delete;

    /// From any thread, for a document that is bytes. Answers why there is no copy; empty if there is one.
    QString write(const TLJiraJobs::Document& document);

    QString path() const;

    /// Those of processes that are no more.
    static void removeLeftovers();

private:
    QString makeFolder();

    QString m_folder;
    /// Tells other processes that the folder has an owner.
    tljira::os::FileLock m_sign;
};

} // namespace jobs
