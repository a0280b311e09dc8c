#include "tests/standin/JiraFixture.h"

#include <QJsonArray>

namespace standin_tests {

std::string requestBytes(const std::string& method, const std::string& target, const std::string& headers,
                         const std::string& body)
{
    std::string bytes = method + " " + target + " HTTP/1.1\r\nHost: jira.example.test\r\n" + headers;
    if (!body.empty())
        bytes += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    return bytes + "\r\n" + body;
}

std::string formBody(const std::string& disposition, const std::string& bytes)
{
    return "--frontier\r\nContent-Disposition: form-data; " + disposition + "\r\n\r\n" + bytes + "\r\n--frontier--\r\n";
}

QJsonObject jsonObject(const Reply& reply)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(reply.body)).object();
}

QJsonArray jsonArray(const Reply& reply)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(reply.body)).array();
}

std::string firstError(const Reply& reply)
{
    return jsonObject(reply)[QStringLiteral("errorMessages")].toArray().at(0).toString().toStdString();
}

JiraFixture::JiraFixture()
    : JiraFixture(standin::Options{})
{
}

JiraFixture::JiraFixture(standin::Options options)
    : server(options)
{
    server.addUser({.name = "anna", .password = "secret", .displayName = "Anna Björk", .email = "anna@example.test"});
    server.addIssue("DEMO-1");
}

Reply JiraFixture::exchange(const std::string& bytes)
{
    RawClient client(server.port());
    client.send(bytes);
    return client.reply();
}

Reply JiraFixture::get(const std::string& target, const std::string& headers)
{
    return exchange(requestBytes("GET", target, headers));
}

Reply JiraFixture::getAsAnna(const std::string& target)
{
    return get(target, cookieOfAnna());
}

Reply JiraFixture::login(const std::string& name, const std::string& password)
{
    const auto body = R"({"username":")" + name + R"(","password":")" + password + R"("})";
    return exchange(requestBytes("POST", sessionPath, "Content-Type: application/json\r\n", body));
}

std::string JiraFixture::cookieOfAnna()
{
    return "Cookie: JSESSIONID=" + server.openSession("anna") + "\r\n";
}

std::string JiraFixture::uploadHeaders()
{
    return cookieOfAnna() + "X-Atlassian-Token: nocheck\r\n" + formType;
}

std::string JiraFixture::uploadRequest(const std::string& disposition, const std::string& bytes)
{
    return requestBytes("POST", attachmentsPath, uploadHeaders(), formBody(disposition, bytes));
}

Reply JiraFixture::upload(const std::string& disposition, const std::string& bytes)
{
    return exchange(uploadRequest(disposition, bytes));
}

} // namespace standin_tests
