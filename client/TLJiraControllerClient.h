#pragma once

// What a program includes that talks to the server without windows: TLJiraTask, each job as one call, or JAController,
// which does what it is told step by step. The program needs a QCoreApplication and its event loop.
//
// What the program chooses, TLJiraOptions, it chooses before it makes the client.
//
// The texts that client and server have agreed upon are in constants/JAConstants.h, for who asks for them by that name.

#include "client/JAController.h"
#include "client/JAControllerDelegate.h"
#include "client/tasks/TLJiraTask.h"
#include "platform/foundation/LogSwitch.h"
#include "records/JAAttachmentObject.h"
#include "records/JAIssueObject.h"
#include "records/JALoginObject.h"
#include "records/JAUser.h"
#include "records/TLJiraOptions.h"
