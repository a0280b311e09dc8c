#include "platform/foundation/ProcessExit.h"

#include <QCoreApplication>

#include <cstdlib>
#include <mutex>
#include <vector>

namespace tljira {

namespace {

/// What is to be called at the exit.
class ExitCalls
{
public:
    static ExitCalls& instance()
    {
        // Never destroyed: who is called may ask for more.
        static auto& calls = *new ExitCalls;
        return calls;
    }

    void add(void (*function)())
    {
        const std::lock_guard lock(m_mutex);
        m_functions.push_back(function);
        registerAnew();
    }

    /// The system runs first what was registered last.
    static void registerAnew()
    {
        std::atexit([] { instance().run(); });
    }

private:
    void run()
    {
        // A child process that a fork has made has neither the threads nor the files.
        if (QCoreApplication::applicationPid() != m_process)
            return;
        while (const auto function = takeLast())
            function();
    }

    void (*takeLast())()
    {
        const std::lock_guard lock(m_mutex);
        if (m_functions.empty())
            return nullptr;
        const auto function = m_functions.back();
        m_functions.pop_back();
        return function;
    }

    const qint64 m_process = QCoreApplication::applicationPid();
    std::mutex m_mutex;
    std::vector<void (*)()> m_functions;
};

void followApplication()
{
    qAddPostRoutine(ExitCalls::registerAnew);
}

Q_COREAPP_STARTUP_FUNCTION(followApplication)

} // namespace

void whenProcessExits(void (*function)())
{
    ExitCalls::instance().add(function);
}

} // namespace tljira
