#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <utility>

namespace tessaloom::tour {

/// A part of the tour: a coroutine that waits in the middle of plain code. It is carried on from the event loop,
/// whichever is innermost, so that it goes straight on where a click begins a modal run and only ends with it.
class [[nodiscard]] Step
{
public:
    struct promise_type;
    using Handle = std::coroutine_handle<promise_type>;

    explicit Step(Handle handle)
        : m_handle(handle)
    {
    }
    Step(Step&& other) noexcept
        : m_handle(std::exchange(other.m_handle, {}))
    {
    }
    Step& operator=(Step&&) = delete;
    ~Step()
    {
        if (m_handle)
            m_handle.destroy();
    }

    void start() { m_handle.resume(); }

    // co_await step;
    bool await_ready() const { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> caller);
    void await_resume() const {}

private:
    Handle m_handle;
};

struct Step::promise_type
{
    /// Goes back to who waits for the end of the step.
    struct Return
    {
        bool await_ready() const noexcept { return false; }
        std::coroutine_handle<> await_suspend(Handle ended) noexcept { return ended.promise().caller; }
        void await_resume() const noexcept {}
    };

    Step get_return_object() { return Step(Handle::from_promise(*this)); }
    std::suspend_always initial_suspend() noexcept { return {}; }
    Return final_suspend() noexcept { return {}; }
    void return_void() {}
    [[noreturn]] void unhandled_exception() { std::terminate(); }

    std::coroutine_handle<> caller = std::noop_coroutine();
};

inline std::coroutine_handle<> Step::await_suspend(std::coroutine_handle<> caller)
{
    m_handle.promise().caller = caller;
    return m_handle;
}

/// Goes on in a later turn of the event loop.
class InNextTurn
{
public:
    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> step) const;
    void await_resume() const {}
};

/// Performs an action in the next turn of the event loop and goes on when that has returned, or begun a modal run that
/// keeps it from returning.
class Perform
{
public:
    explicit Perform(std::function<void()> action)
        : m_action(std::move(action))
    {
    }
    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> step) const;
    void await_resume() const {}

private:
    std::function<void()> m_action;
};

/// Waits until the condition holds, and answers whether it did before the time was over.
class Until
{
public:
    explicit Until(std::function<bool()> condition)
        : m_condition(std::move(condition))
    {
    }
    bool await_ready() { return m_holds = m_condition(); }
    void await_suspend(std::coroutine_handle<> step);
    bool await_resume() const { return m_holds; }

private:
    void look();

    std::function<bool()> m_condition;
    std::coroutine_handle<> m_step;
    int m_looks = 0;
    bool m_holds = false;
};

} // namespace tessaloom::tour
