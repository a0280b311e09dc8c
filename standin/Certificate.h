#pragma once

#include "standin/Options.h"

#include <string>

namespace standin {

/// A self-signed certificate for localhost, 127.0.0.1 and jira.example.test, made afresh.
struct Certificate
{
    std::string certificate = {}; ///< PEM
    std::string key = {};         ///< PEM

    static Certificate make(Tls kind);
};

} // namespace standin
