#pragma once

#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "shell/TLJiraUpload.h"
#include "tests/kit/JiraTest.h"

namespace tests {

/// The upload window of a user who has used it before.
class TLJiraUploadTest : public JiraTest
{
protected:
    TLJiraUploadTest();

    /// Makes the controller and shows its window.
    void open();
    bool waitForLoginForm();
    bool waitForBody();
    /// Fills in the entry window's form and presses its button.
    void logInThroughTheForm(const QString& password = QStringLiteral("secret"));
    QStringList names() const;

    LoneDocument document;
    std::shared_ptr<TLJiraUpload> entry;
};

} // namespace tests
