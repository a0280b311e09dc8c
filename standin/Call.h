#pragma once

#include "standin/Jira.h"
#include "standin/RequestHead.h"
#include "standin/Response.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

/// What a resource needs to know of a request.
struct Request
{
    RequestHead head;
    std::string base;                 ///< what links begin with, without a slash at the end
    std::string folder;               ///< the path of the base, without a slash at the end
    std::string path;                 ///< below the base, as sent
    std::vector<std::string> cookies; ///< the values of all JSESSIONID cookies
    std::optional<std::string> user;  ///< of the session or the token, when there is a good one
};

/// One request on its way through a resource: first the body, piece by piece, then the answer.
class Call
{
public:
    virtual ~Call() = default;
    virtual void feed(std::string_view bytes) = 0;
    virtual Response answer() = 0;
};

/// A call with a body that is small enough to be kept; what is too much of it is dropped.
class SmallCall final : public Call
{
public:
    using Function = std::function<Response(const std::string& body)>;

    explicit SmallCall(Function function);
    void feed(std::string_view bytes) override;
    Response answer() override;

private:
    Function m_function;
    std::string m_body;
};

/// A call whose answer does not depend on the body.
std::unique_ptr<Call> fixedCall(Response response);

/// Finds the resource for a request. `scheme` is "http" or "https".
std::unique_ptr<Call> openCall(RequestHead head, const std::string& scheme, Jira& jira, const Options& options);

} // namespace standin
