#pragma once

#include "client/JAController.h"
#include "client/tasks/SingleEnd.h"
#include "client/tasks/TLJiraTask.h"

#include <QJsonObject>

namespace client {

/// A job without a window. It has a client of its own: so it can be broken off at any moment, whatever it is about to
/// ask, and no job hears of another's transfers.
class Task : public SingleEnd
{
public:
    void begin();
    void cancel();

protected:
    /// `issueKey` may be empty where no issue is concerned.
    explicit Task(const QString& issueKey = {});

    /// Asks for the first thing.
    virtual void start() = 0;

    /// Until the end.
    JAController& client() const { return *m_client; }
    /// For callbacks of the client: they do nothing once the end has been settled.
    template <class Kind>
    std::weak_ptr<Kind> weakFrom(Kind* self)
    {
        return std::static_pointer_cast<Kind>(self->shared_from_this());
    }

    const QString& issueKey() const { return m_issueKey; }
    const TLJiraResult& result() const { return m_result; }

    ///@{
    /// Settles the end, unless it is.
    void end(TLJiraResult result);
    void fail(const tljira::Error& error);
    /// The server's answer is not what was asked for.
    void failWith(const QString& text);
    void succeed();
    ///@}
    /// Goes on with the session that is saved, which may have to be read from the keyring first; otherwise at once. One
    /// of another server than at the start is an end. Ahead of every request that is not made with the first.
    void whenSignedIn(const std::function<void()>& proceed);
    /// Whether there is no key of an issue; that is an end then.
    bool lacksKey();

    void stop() override;
    void tell() final;
    /// Calls the host back, and lets go of what it handed in.
    virtual void tellHost() = 0;

private:
    /// Whether what is saved is for another server than this job's; that is an end then.
    bool hasLostSession();

    const QString m_issueKey;
    /// The saved address, session and token at the start.
    const QJsonObject m_login;
    std::shared_ptr<JAController> m_client;
    TLJiraResult m_result;
};

} // namespace client
