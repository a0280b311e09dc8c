#pragma once

#include <QByteArray>

namespace bench {

/// A server's answer for an issue with so many attachments, each with all the fields that a real one has.
inline QByteArray issueAnswer(int attachments)
{
    QByteArray answer =
        R"({"id":"10000","key":"DEMO-1","self":"http://jira.example.test/rest/api/2/issue/10000","fields":{)"
        R"("summary":"A summary","attachment":[)";
    for (int i = 0; i < attachments; ++i) {
        const QByteArray id = QByteArray::number(10000 + i);
        answer += i > 0 ? "," : "";
        answer +=
            R"({"self":"http://jira.example.test/rest/api/2/attachment/)" + id + R"(","id":")" + id +
            R"(","filename":"plan )" + id +
            R"(.tessaloom","author":{"self":"http://jira.example.test/rest/api/2/user?username=demo",)"
            R"("name":"demo","key":"demo","emailAddress":"demo@example.test","avatarUrls":{"48x48":"http://jira.example.test/a48",)"
            R"("24x24":"http://jira.example.test/a24","16x16":"http://jira.example.test/a16","32x32":"http://jira.example.test/a32"},)"
            R"("displayName":"Demo","active":true,"timeZone":"Europe/Berlin"},"created":"2017-10-16T10:06:29.399+0200",)"
            R"("size":60444,"mimeType":"application/octet-stream","content":"http://jira.example.test/secure/attachment/)" +
            id + R"(/plan+)" + id + R"(.tessaloom"})";
    }
    return answer + "]}}";
}

} // namespace bench
