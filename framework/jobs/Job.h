#pragma once

#include "client/tasks/SingleEnd.h"
#include "framework/TLJiraJobs.h"

#include <QPointer>
#include <QTimer>

#include <memory>

namespace tljira {
class Window;
}

namespace jobs {

/// What a caller of either job says beside the document.
struct Order
{
    QPointer<QObject> parent;
    TLJiraJobs::Ended ended;
    TLJiraJobs::Options options;
};

/// A job with a window. It ends with the parent and with the application if not before.
class Job : public client::SingleEnd
{
protected:
    explicit Job(const Order& order);

    /// To be called by the factory of a subclass. Keeps the job.
    void begin();

    bool has(TLJiraJobs::Option option) const { return m_options.testFlag(option); }
    QObject* parent() const { return m_parent; }

    /// The window closes by itself when its user has seen what it says, and no other window runs modally: closing may
    /// end the innermost run.
    void closeSoon();
    /// Not any more.
    void stayOpen() { m_closing.stop(); }

    /// How the job would end at this moment.
    virtual TLJiraJobs::Result result() const = 0;
    virtual std::shared_ptr<tljira::Window> window() const = 0;
    /// As its user closes it; what is under way is broken off.
    virtual void closeWindow() = 0;
    /// As its user closes it after what went well.
    virtual void closeAfterDone() = 0;

private:
    void stop() final;
    void tell() final;

    QPointer<QObject> m_parent;
    TLJiraJobs::Ended m_ended;
    const TLJiraJobs::Options m_options;
    QTimer m_closing;
};

} // namespace jobs
