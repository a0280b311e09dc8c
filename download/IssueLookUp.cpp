#include "download/IssueLookUp.h"

#include "client/JAController.h"
#include "download/LookUpHint.h"

void lookUpIssue(const QString& key, const std::shared_ptr<LookUpHint>& hint,
                 const std::function<void(const JAIssueObject&)>& show)
{
    if (hint)
        hint->begin(key);
    JAController::sharedInstance()->getIssueObject(
        key, [hint, key, show](const std::shared_ptr<const JAIssueObject>& issue, const auto&) {
            if (hint)
                hint->end(key);
            if (issue)
                show(*issue);
        });
}
