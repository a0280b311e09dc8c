#pragma once

#include "standin/Call.h"

namespace standin {

/// Where Cloud keeps the bytes of attachments: another host, which gives them to everybody with a ticket that Jira
/// signed, and to nobody who shows a sign-in besides.

/// Sends the client on to the attachment's bytes at Options::contentsBase.
Response sendToMedia(const AttachmentState& attachment, Jira& jira, const Options& options);

/// Whether the request is for that host rather than for Jira.
bool isForMedia(const RequestHead& head, const Options& options);

Response showMedia(const RequestHead& head, const Jira& jira);

} // namespace standin
