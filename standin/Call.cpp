#include "standin/Call.h"

namespace standin {

namespace {

constexpr std::size_t mostBodyBytes = 1 << 20;

} // namespace

SmallCall::SmallCall(Function function)
    : m_function(std::move(function))
{
}

void SmallCall::feed(std::string_view bytes)
{
    m_body += bytes.substr(0, mostBodyBytes - m_body.size());
}

Response SmallCall::answer()
{
    return m_function(m_body);
}

std::unique_ptr<Call> fixedCall(Response response)
{
    return std::make_unique<SmallCall>([response = std::move(response)](const std::string&) { return response; });
}

} // namespace standin
