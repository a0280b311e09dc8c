#pragma once

// What a program includes that talks to the server without windows: JAController and what it hands out. The program
// needs a QCoreApplication and its event loop.

#include "client/JAController.h"
#include "client/JAControllerDelegate.h"
#include "constants/JAConstants.h"
#include "records/JAAttachmentObject.h"
#include "records/JAIssueObject.h"
#include "records/JALoginObject.h"
#include "records/JAUser.h"
