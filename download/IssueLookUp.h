#pragma once

#include "records/JAIssueObject.h"

#include <QString>

#include <functional>
#include <memory>

class LookUpHint;

/// Asks the server for the issue of this key; meanwhile the hint, which may be null, says so. `show` gets the issue. Of
/// a look-up that fails nobody hears. Main thread only.
void lookUpIssue(const QString& key, const std::shared_ptr<LookUpHint>& hint,
                 const std::function<void(const JAIssueObject&)>& show);
