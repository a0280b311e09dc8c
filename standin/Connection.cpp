#include "standin/Connection.h"

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <algorithm>
#include <limits>
#include <utility>

namespace standin {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t smallBuffer = std::size_t(16) * 1024;
constexpr std::size_t largeBuffer = std::size_t(512) * 1024;
constexpr std::size_t mostHeadBytes = std::size_t(4) * 1024 * 1024;
constexpr std::int64_t endless = std::numeric_limits<std::int64_t>::max();

/// Thrown to leave an exchange whose connection is of no more use.
struct Ended
{
};

std::string schemeOf(const Options& options)
{
    return options.tls == Tls::none ? "http" : "https";
}

} // namespace

Connection::Connection(std::int64_t number, boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* tls,
                       Shared& shared)
    : m_number(number)
    , m_wire(std::move(socket), tls)
    , m_shared(shared)
    , m_timer(m_wire.executor())
{
}

void Connection::abort()
{
    m_isAborted = true;
    m_wire.close();
    m_timer.cancel();
}

boost::asio::awaitable<void> Connection::serve()
{
    bool endsProperly = false;
    try {
        bool goesOn = co_await m_wire.handshake();
        while (goesOn)
            goesOn = co_await exchange();
        endsProperly = true;
    } catch (const Ended&) {
        m_wire.close();
    }
    if (endsProperly)
        co_await m_wire.finish();
}

boost::asio::awaitable<bool> Connection::exchange()
{
    const auto head = co_await receiveHead();
    if (!head)
        co_return false;
    const auto number = m_shared.recorder.begin(m_number, *head);
    bool goesOn = false;
    bool hasEnded = false;
    try {
        const Fault fault = m_shared.controls.take(head->method(), head->path());
        goesOn = co_await answer(*head, fault, number);
    } catch (const Ended&) {
        hasEnded = true;
    }
    m_shared.recorder.finished(number);
    if (hasEnded)
        throw Ended();
    co_return goesOn;
}

boost::asio::awaitable<bool> Connection::answer(const RequestHead& head, const Fault& fault, std::int64_t number)
{
    const bool isReplaced = fault.answer() || fault.rawBytes();
    const auto call = isReplaced ? fixedCall(faultResponse(fault, head))
                                 : openCall(head, schemeOf(m_shared.options), m_shared.jira, m_shared.options);
    if (fault.answersBeforeBody()) {
        const auto outgoing = Outgoing::frame(call->answer(), head, fault);
        co_await send(outgoing, fault, number);
        co_await receiveBody(head, fault, number, nullptr);
        co_return !outgoing.closes;
    }
    if (head.expectsContinue()) {
        constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";
        co_await m_wire.send(goOn.data(), goOn.size());
    }
    co_await receiveBody(head, fault, number, call.get());
    const auto outgoing = Outgoing::frame(call->answer(), head, fault);
    co_await send(outgoing, fault, number);
    co_return !outgoing.closes;
}

boost::asio::awaitable<std::optional<RequestHead>> Connection::receiveHead()
{
    std::string bytes;
    constexpr std::string_view end = "\r\n\r\n";
    while (bytes.size() < mostHeadBytes) {
        if (received().empty()) {
            const bool came = co_await fill(smallBuffer);
            if (!came)
                co_return std::nullopt;
        }
        const auto searched = bytes.size() < end.size() ? 0 : bytes.size() - end.size();
        const auto before = bytes.size();
        bytes += received();
        const auto found = bytes.find(end, searched);
        if (found == std::string::npos) {
            consume(received().size());
            continue;
        }
        bytes.resize(found + end.size());
        consume(bytes.size() - before);
        auto head = RequestHead::parse(std::move(bytes));
        if (!head)
            break;
        co_return head;
    }
    constexpr std::string_view refusal = "HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
    co_await m_wire.send(refusal.data(), refusal.size());
    co_return std::nullopt;
}

boost::asio::awaitable<void> Connection::receiveBody(const RequestHead& head, const Fault& fault, std::int64_t number,
                                                     Call* call)
{
    const auto stops = StopList::forRequest(fault);
    Digester digester(m_shared.options.digest);
    const auto take = [&](std::string_view bytes) {
        m_shared.recorder.bodyReceived(number, bytes);
        digester.add(bytes);
        if (call != nullptr)
            call->feed(bytes);
    };
    ChunkedDecoder decoder;
    const bool isChunked = head.isChunked();
    const std::int64_t length = isChunked ? endless : head.contentLength();
    std::int64_t position = 0;
    co_await perform(stops.at(position));
    while (isChunked ? !decoder.isDone() : position < length) {
        auto limit = std::min(length - position, stops.distance(position));
        if (fault.sipPace())
            limit = std::min(limit, static_cast<std::int64_t>(fault.sipPace()->bytes));
        if (received().empty()) {
            const bool came = co_await fill(static_cast<std::size_t>(std::min<std::int64_t>(limit, largeBuffer)));
            if (!came)
                throw Ended();
        }
        const auto bytes = received().substr(0, static_cast<std::size_t>(limit));
        const auto used = isChunked ? decoder.feed(bytes, take) : bytes.size();
        if (!isChunked)
            take(bytes);
        if (decoder.hasFailed())
            throw Ended();
        consume(used);
        position += static_cast<std::int64_t>(used);
        co_await perform(stops.at(position));
        if (fault.sipPace())
            co_await pause(fault.sipPace()->interval);
    }
    m_shared.recorder.bodyCompleted(number, digester.finish());
}

boost::asio::awaitable<void> Connection::send(const Outgoing& outgoing, const Fault& fault, std::int64_t number)
{
    const auto headBytes = static_cast<std::int64_t>(outgoing.head.size());
    const auto total = headBytes + outgoing.body->size();
    const auto stops = StopList::forResponse(fault, headBytes);
    std::int64_t position = 0;
    co_await perform(stops.at(position));
    m_shared.recorder.answering(number, outgoing.status);
    while (position < total) {
        auto length = std::min({total - position, stops.distance(position), std::int64_t{largeBuffer}});
        if (fault.dripPace())
            length = position < headBytes ? std::min(length, headBytes - position)
                                          : std::min(length, static_cast<std::int64_t>(fault.dripPace()->bytes));
        fillSendBuffer(outgoing, position, static_cast<std::size_t>(length));
        const bool sent = co_await m_wire.send(m_output.data(), static_cast<std::size_t>(length));
        if (!sent)
            throw Ended();
        const auto bodyBefore = std::max(position, headBytes);
        position += length;
        m_shared.recorder.bodySent(number, std::max<std::int64_t>(position - bodyBefore, 0));
        co_await perform(stops.at(position));
        if (fault.dripPace() && position > headBytes && position < total)
            co_await pause(fault.dripPace()->interval);
    }
}

void Connection::fillSendBuffer(const Outgoing& outgoing, std::int64_t position, std::size_t length)
{
    m_output.resize(std::max(m_output.size(), length));
    const auto headBytes = static_cast<std::int64_t>(outgoing.head.size());
    std::size_t filled = 0;
    if (position < headBytes) {
        filled = std::min(length, static_cast<std::size_t>(headBytes - position));
        std::copy_n(outgoing.head.data() + position, filled, m_output.data());
    }
    const auto bodyPosition = std::max<std::int64_t>(position - headBytes, 0);
    if (filled < length && !outgoing.body->read(bodyPosition, m_output.data() + filled, length - filled))
        throw Ended();
}

boost::asio::awaitable<void> Connection::perform(std::vector<Stop> stops)
{
    for (const auto& stop : stops) {
        switch (stop.action) {
        case Stop::Action::close:
            m_wire.close();
            throw Ended();
        case Stop::Action::reset:
            m_wire.reset();
            throw Ended();
        case Stop::Action::hold:
            co_await hold();
            break;
        case Stop::Action::delay:
            co_await pause(stop.duration);
            break;
        }
    }
}

boost::asio::awaitable<void> Connection::hold()
{
    struct Ticket
    {
        Controls& controls;
        std::int64_t number = controls.hold();
        ~Ticket() { controls.leave(number); }
    };
    const Ticket ticket{m_shared.controls};
    while (m_shared.controls.isHeld(ticket.number))
        co_await tick(2ms);
}

boost::asio::awaitable<void> Connection::pause(std::chrono::milliseconds duration)
{
    const auto end = Clock::now() + duration;
    for (auto now = Clock::now(); now < end; now = Clock::now())
        co_await tick(std::min(std::chrono::ceil<std::chrono::milliseconds>(end - now), 20ms));
}

/// Waits a little, and notices when there is nobody left to wait for.
boost::asio::awaitable<void> Connection::tick(std::chrono::milliseconds duration)
{
    boost::system::error_code ignored;
    m_timer.expires_after(duration);
    co_await m_timer.async_wait(boost::asio::redirect_error(boost::asio::use_awaitable, ignored));
    if (m_isAborted || m_wire.isPeerGone())
        throw Ended();
}

boost::asio::awaitable<bool> Connection::fill(std::size_t atMost)
{
    m_input.resize(std::max(m_input.size(), atMost));
    m_begin = 0;
    m_end = co_await m_wire.receive(m_input.data(), atMost);
    co_return m_end > 0;
}

} // namespace standin
