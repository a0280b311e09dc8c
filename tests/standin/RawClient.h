#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace standin_tests {

struct Reply
{
    int status = 0; ///< 0: none came
    std::string head = {};
    std::string body = {};
    bool isComplete = false; ///< the body is as long as announced

    /// Several headers of one name are joined by ", ".
    std::string header(const std::string& name) const;
};

/// A blocking client that sends exactly the bytes it is given and sees how a connection ends.
class RawClient
{
public:
    enum class End { none, closed, reset };

    explicit RawClient(std::uint16_t port);
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    /// False once the server does not take any more.
    bool send(std::string_view bytes);
    /// Says that nothing more will be sent.
    void endSending();
    /// Reads one response whose head has a Content-Length, or none and no body. Interim responses are passed over.
    Reply reply();
    /// Everything up to the end of the connection.
    std::string readAll();
    /// Reads until there are this many bytes or the connection ends.
    std::string read(std::size_t bytes);

    End end() const { return m_end; }

private:
    bool fill();

    int m_socket;
    std::string m_buffer;
    End m_end = End::none;
};

} // namespace standin_tests
