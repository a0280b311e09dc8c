#pragma once

#include "standin/Content.h"
#include "standin/Fault.h"
#include "standin/RequestHead.h"
#include "standin/Response.h"

#include <string>

namespace standin {

/// A response as its bytes go over the wire.
struct Outgoing
{
    int status = 0;
    std::string head = {};
    ContentPtr body = {}; ///< never null
    bool closes = false;  ///< the connection ends behind it

    static Outgoing frame(Response response, const RequestHead& request, const Fault& fault);
};

/// The response that a fault puts in the place of the proper one.
Response faultResponse(const Fault& fault, const RequestHead& request);

} // namespace standin
