#pragma once

#include "platform/foundation/Export.h"

#include <QString>

/// @file
/// Texts that the client and the server, or the client and its host, have agreed upon. Each is a reference, since the
/// linker may give a program that is compiled for fixed addresses a copy of a library's variable: a copied reference
/// still leads to the text.

///@{
/// A path of the server's REST interface, relative to its base address. "%@" stands for the key of an issue.
extern TL_EXPORT const QString& kLoginURLPath;
extern TL_EXPORT const QString& kCurrentUserPath;
extern TL_EXPORT const QString& kGetIssue;
extern TL_EXPORT const QString& kAttachFilePath;
extern TL_EXPORT const QString& kUserPath;
///@}

///@{
/// A key of the server's answer about a session.
extern TL_EXPORT const QString& kSession;
extern TL_EXPORT const QString& kSessionName;
extern TL_EXPORT const QString& kSessionValue;
extern TL_EXPORT const QString& kLoginInfo;
extern TL_EXPORT const QString& kFailedLoginCount;
extern TL_EXPORT const QString& kLoginCount;
extern TL_EXPORT const QString& kLastFailedLoginTime;
extern TL_EXPORT const QString& kPreviousLoginTime;
///@}

///@{
/// A key of the server's answer about the current user.
extern TL_EXPORT const QString& kAvatarUrls;
extern TL_EXPORT const QString& kAvatarUrl48;
extern TL_EXPORT const QString& kDispayName;
extern TL_EXPORT const QString& kEmailAddress;
extern TL_EXPORT const QString& kKey;
extern TL_EXPORT const QString& kName;
extern TL_EXPORT const QString& kTimeZone;
///@}

/// Key of the server's address in the user defaults, and the text that stands for the address until there is one.
extern TL_EXPORT const QString& kJiraURL;
/// Key in the user defaults of the mark that this user's first run is over.
extern TL_EXPORT const QString& kClearCache;

/// Name of the folder of downloaded documents inside the temporary directory.
extern TL_EXPORT const QString& kPrefixDirectory;
