#pragma once

#include "standin/Content.h"

#include <QJsonArray>
#include <QJsonObject>

#include <string>
#include <utility>
#include <vector>

namespace standin {

/// What a resource answers; its framing is added later.
struct Response
{
    int status = 200;
    std::vector<std::pair<std::string, std::string>> headers = {};
    ContentPtr body = {}; ///< null: none, and no Content-Type

    static Response empty(int status);
    static Response text(int status, std::string body);
    static Response html(int status, std::string body);
    static Response bytes(int status, std::string body, std::string contentType);
    static Response json(int status, const QJsonObject& object);
    static Response json(int status, const QJsonArray& array);
    /// {"errorMessages":[message],"errors":{}}
    static Response error(int status, const std::string& message);

    Response&& with(std::string name, std::string value) &&;
};

/// The phrase that goes with a status code.
std::string reasonPhrase(int status);

} // namespace standin
