#pragma once

#include <QtGlobal>

/// What can go wrong with a document on its way, in English. The windows say it in the user's language.
namespace client::texts {

/// With a place for what it is to be called.
inline constexpr char notAName[] = QT_TRANSLATE_NOOP("TLJiraJobs", "“%1” cannot be an attachment’s name.");
/// With a place for the reason.
inline constexpr char noCopy[] = QT_TRANSLATE_NOOP("TLJiraJobs", "The document could not be copied: %1");
/// A reason: the host's writer gave none.
inline constexpr char notWritten[] = QT_TRANSLATE_NOOP("TLJiraJobs", "The program could not write it.");
/// What arrived has another size than the document; with places for both.
inline constexpr char notTheDocument[] =
    QT_TRANSLATE_NOOP("TLJiraJobs", "The server sent something else than the document: %1 bytes instead of %2.");
/// With a place for the reason.
inline constexpr char notKept[] = QT_TRANSLATE_NOOP("TLJiraJobs", "The document could not be put in its place: %1");

} // namespace client::texts
