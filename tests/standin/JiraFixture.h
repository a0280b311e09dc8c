#pragma once

#include "standin/Server.h"
#include "tests/standin/RawClient.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <string>

namespace standin_tests {

/// The bytes of a request with a Host header, `headers` (whole lines with their ends) and, for a body, its length.
std::string requestBytes(const std::string& method, const std::string& target, const std::string& headers = {},
                         const std::string& body = {});
/// A form with one part, `disposition` being what follows "form-data; ".
std::string formBody(const std::string& disposition, const std::string& bytes);

QJsonObject jsonObject(const Reply& reply);
QJsonArray jsonArray(const Reply& reply);
/// The first of "errorMessages".
std::string firstError(const Reply& reply);

/// A server with the user anna, password secret, and the empty issue DEMO-1.
class JiraFixture : public testing::Test
{
protected:
    JiraFixture();
    explicit JiraFixture(standin::Options options);

    Reply exchange(const std::string& bytes);
    Reply get(const std::string& target, const std::string& headers = {});
    /// With a good session.
    Reply getAsAnna(const std::string& target);
    Reply login(const std::string& name, const std::string& password);
    /// A session's Cookie header line.
    std::string cookieOfAnna();

    /// The header lines that make an upload acceptable.
    std::string uploadHeaders();
    std::string uploadRequest(const std::string& disposition, const std::string& bytes);
    Reply upload(const std::string& disposition, const std::string& bytes);

    standin::Server server;
};

/// The media type of formBody's result.
constexpr const char* formType = "Content-Type: multipart/form-data; boundary=frontier\r\n";
constexpr const char* attachmentsPath = "/rest/api/2/issue/DEMO-1/attachments";
constexpr const char* sessionPath = "/rest/auth/1/session";

} // namespace standin_tests
