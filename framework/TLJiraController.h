#pragma once

// What a host includes. It does each of the two jobs with one call:
//
//     TLJiraJobs::attach({name, bytes}, window, [](const TLJiraJobs::Result& result) { … });
//     TLJiraJobs::fetch(window, [](const TLJiraJobs::Result& result) { … });
//
// or opens a window with one of the three entry controllers:
//
//     TLJiraUpload::initWithName(name, copy)->showWindow();          // attach a document to an issue
//     JMWindowController::init()->run([](const auto& path) { … });   // fetch a document from one
//     JAWindowController::initWithPath(path)->showWindow();          // the older window
//
// `copy` lies alone in a folder of its own, which is removed when the upload ends; the file at `path` goes with the
// next download. The examples of the project's documents see to both.
//
// What it chooses for the whole process, such as tokens in place of passwords, it chooses before all that, with
// TLJiraOptions.
//
// The texts that client and server have agreed upon are in constants/JAConstants.h, for who asks for them by that name.
//
// The host needs a QApplication and its event loop, no more. What the user enters is kept under the name that
// QCoreApplication::applicationName() has when the first controller is made.

#include "client/JAController.h"
#include "client/tasks/TLJiraTask.h"
#include "download/JAAttachedCell.h"
#include "download/JABodyViewController.h"
#include "download/JADownloadBodyViewController.h"
#include "download/JAListAttachedFilesWindow.h"
#include "framework/TLJiraJobs.h"
#include "framework/Version.h"
#include "platform/foundation/LogSwitch.h"
#include "platform/toolkit/windows/Application.h"
#include "records/JAAttachmentObject.h"
#include "records/JAIssueObject.h"
#include "records/JALoginObject.h"
#include "records/JAUser.h"
#include "records/TLJiraOptions.h"
#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "shell/JAWindowController.h"
#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "shell/UIViewStyle.h"
#include "upload/JAUploadBodyViewController.h"
#include "upload/JAUploadingWindow.h"
