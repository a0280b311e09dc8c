#include "cli/UserQuestion.h"

namespace cli {

void askForUser(JAController& client,
                const std::function<void(const std::shared_ptr<const JAUser>& user, const Outcome& failure)>& answer)
{
    client.getCurrentUser([answer](const std::shared_ptr<const JAUser>& user, const auto& error) {
        if (!user)
            answer(nullptr, Outcome::failed(error));
        else if (!user->name() && !user->key() && !user->displayName())
            answer(nullptr, Outcome::failed(QStringLiteral("The server’s answer names no user.")));
        else
            answer(user, {});
    });
}

} // namespace cli
