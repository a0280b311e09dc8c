#pragma once

#include "platform/foundation/Export.h"

#include <QString>

#include <optional>

namespace records {

/// The address that requests to a server begin with, with a "/" at its end: what counts of the one that its user typed
/// (TLJiraOptions::Address). A part that is needed and missing reads "(null)". Without port and path an IPv6 address
/// stands there without its brackets.
TL_EXPORT QString baseOf(const QString& address);

/// Scheme, host and port of an http address in one spelling, `https://host:443`, which tells whether two addresses are
/// of the same place. Nothing for other addresses, and for those that not every reader takes apart in the same way.
std::optional<QString> originOf(const QString& address);

} // namespace records
