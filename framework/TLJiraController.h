#pragma once

// What a host includes. It opens a window with one of the three entry controllers:
//
//     TLJiraUpload::initWithName(name, path)->showWindow();          // attach a document to an issue
//     JMWindowController::init()->run([](const auto& path) { … });   // fetch a document from one
//     JAWindowController::initWithPath(path)->showWindow();          // the older window
//
// The host needs a QApplication and its event loop, no more. What the user enters is kept under the name that
// QCoreApplication::applicationName() has when the first controller is made.

#include "client/JAController.h"
#include "constants/JAConstants.h"
#include "download/JAAttachedCell.h"
#include "download/JABodyViewController.h"
#include "download/JADownloadBodyViewController.h"
#include "download/JAListAttachedFilesWindow.h"
#include "framework/Version.h"
#include "platform/toolkit/Application.h"
#include "records/JAAttachmentObject.h"
#include "records/JAIssueObject.h"
#include "records/JALoginObject.h"
#include "records/JAUser.h"
#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "shell/JAWindowController.h"
#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "shell/UIViewStyle.h"
#include "upload/JAUploadBodyViewController.h"
#include "upload/JAUploadingWindow.h"
