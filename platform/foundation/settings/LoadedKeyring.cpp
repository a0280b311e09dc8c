#include "platform/foundation/MainQueue.h"
#include "platform/foundation/settings/Keyring.h"
#include "platform/foundation/settings/KeyringLoader.h"
#include "platform/foundation/settings/KeyringService.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

#include <deque>
#include <utility>

namespace tljira {

namespace {

using Answer = KeyringService::Answer;
using End = KeyringService::End;

/// What is asked for, one thing after the other. Each says when it has ended.
class Line
{
public:
    using Work = std::function<void(const std::function<void()>& ended)>;

    static Line& instance()
    {
        // Never destroyed: the keyring may answer while the process ends.
        static auto& line = *new Line;
        return line;
    }

    void add(const Work& work)
    {
        m_waiting.push_back(work);
        if (!m_isBusy)
            next();
    }

    /// What the library has been asked never ends when the application does.
    void drop()
    {
        m_waiting.clear();
        m_isBusy = false;
        ++m_application;
    }

private:
    void next()
    {
        m_isBusy = !m_waiting.empty();
        if (!m_isBusy)
            return;
        const Work work = std::move(m_waiting.front());
        m_waiting.pop_front();
        work([this, application = m_application] {
            if (application == m_application)
                next();
        });
    }

    std::deque<Work> m_waiting;
    bool m_isBusy = false;
    int m_application = 0;
};

KeyringLoader& loader()
{
    // Never destroyed, as what it has loaded stays.
    static auto& loader = *new KeyringLoader;
    return loader;
}

/// The application as its folder of settings is named, so that each has a text of its own.
KeyringService::Entry entry()
{
    const QString organization = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    return {organization.isEmpty() ? application : organization + u'/' + application, QStringLiteral("login")};
}

/// libsecret, behind the library, brings its answers to GLib's event loop alone: in another they would never come.
bool isAnswered()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const auto* const dispatcher = QAbstractEventDispatcher::instance();
    return dispatcher && dispatcher->inherits("QEventDispatcherGlib");
#else
    return true;
#endif
}

Keyring::Problem problemOf(End end)
{
    switch (end) {
    case End::NotFound:
        return Keyring::Problem::NotFound;
    case End::Locked:
        return Keyring::Problem::Locked;
    default:
        return Keyring::Problem::Unreachable;
    }
}

/// Why nobody can be asked.
struct Obstacle
{
    Keyring::Problem problem;
    QString detail;
};

std::optional<Obstacle> obstacle()
{
    if (!isAnswered())
        return Obstacle{Keyring::Problem::WrongEventLoop, {}};
    if (!loader().service())
        return Obstacle{Keyring::Problem::NotLoaded, loader().failure()};
    return std::nullopt;
}

void answerLater(const std::function<void()>& answer)
{
    MainQueue::instance().addOperation(answer);
}

} // namespace

void Keyring::read(const Read& callBack)
{
    if (const auto why = obstacle()) {
        answerLater([callBack, why] { callBack(std::nullopt, makeError(why->problem, why->detail)); });
        return;
    }
    Line::instance().add([callBack](const auto& ended) {
        loader().service()->read(entry(), [callBack, ended](const Answer& answer) {
            if (answer.end != End::Done)
                callBack(std::nullopt, makeError(problemOf(answer.end), answer.detail));
            else
                callBack(answer.text, std::nullopt);
            ended();
        });
    });
}

void Keyring::write(const QString& text, const Done& callBack)
{
    if (const auto why = obstacle()) {
        answerLater([callBack, why] { callBack(makeError(why->problem, why->detail)); });
        return;
    }
    Line::instance().add([text, callBack](const auto& ended) {
        loader().service()->write(entry(), text, [callBack, ended](const Answer& answer) {
            if (answer.end != End::Done)
                callBack(makeError(problemOf(answer.end), answer.detail));
            else
                callBack(std::nullopt);
            ended();
        });
    });
}

// The library says that it has removed what a locked keyring goes on holding. Such a keyring takes no new text either,
// and that it says.
void Keyring::remove(const Done& callBack)
{
    if (const auto why = obstacle()) {
        answerLater([callBack, why] { callBack(makeError(why->problem, why->detail)); });
        return;
    }
    Line::instance().add([callBack](const auto& ended) {
        const auto removed = [callBack, ended](const Answer& answer) {
            if (answer.end != End::Done && answer.end != End::NotFound)
                callBack(makeError(Problem::NotRemoved, answer.detail));
            else
                callBack(std::nullopt);
            ended();
        };
        loader().service()->write(entry(), {}, [removed](const Answer& overwritten) {
            if (overwritten.end != End::Done)
                removed(overwritten);
            else
                loader().service()->remove(entry(), removed);
        });
    });
}

namespace {

void followApplication()
{
    qAddPostRoutine([] { Line::instance().drop(); });
}

Q_COREAPP_STARTUP_FUNCTION(followApplication)

} // namespace

} // namespace tljira
