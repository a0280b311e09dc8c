#include "standin/Records.h"

#include "standin/RequestHead.h"

namespace standin {

std::string RecordedRequest::header(const std::string& name) const
{
    const auto parsed = RequestHead::parse(head);
    return parsed ? parsed->header(name) : std::string();
}

int RecordedRequest::headerCount(const std::string& name) const
{
    const auto parsed = RequestHead::parse(head);
    return parsed ? static_cast<int>(parsed->headers(name).size()) : 0;
}

} // namespace standin
