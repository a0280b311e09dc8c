#pragma once

#include <QJsonObject>

#include <cstdint>
#include <string>
#include <vector>

namespace standin {

/// Replaces members of a JSON object that the server is about to send, to see what a client makes of it: `set`
/// overwrites or adds, `without` leaves out.
struct Override
{
    QJsonObject set = {};
    std::vector<std::string> without = {};
};

/// All texts in these records are UTF-8.
struct User
{
    std::string name = {};
    std::string password = {};
    std::string displayName = {}; ///< empty: the name
    std::string email = {};       ///< empty: NAME@example.test
    Override json = {};
    /// For "Authorization: Basic", with the e-mail address or, unless the server is a Cloud, the name; empty: none.
    std::string apiToken = {};
    std::string accessToken = {}; ///< for "Authorization: Bearer", unless the server is a Cloud; empty: none
};

struct Issue
{
    std::string key = {};
    std::string summary = {}; ///< empty: made from the key
    Override json = {};       ///< of the issue object
    Override fields = {};     ///< of its "fields"
};

struct NewAttachment
{
    std::string fileName = {};
    std::string bytes = {};
    /// As it is to appear in the JSON, for instance "2017-10-16T10:06:29.399+0200"; empty: now.
    std::string created = {};
    std::string mimeType = {}; ///< empty: derived from the name
    std::string author = {};   ///< a user's name; empty: the first user's
    /// Not negative: a file of this many bytes that is generated while it is sent (see Server::pattern); `bytes` is
    /// ignored.
    std::int64_t syntheticSize = -1;
    Override json = {};
};

struct StoredAttachment
{
    std::int64_t id = 0;
    std::string issueKey = {};
    std::string fileName = {};
    std::string mimeType = {};
    std::string created = {};
    std::string author = {};
    std::int64_t size = 0;
    std::string digest = {}; ///< by Options::digest, in lower-case hexadecimal digits; empty for a synthetic file
};

struct RecordedRequest
{
    std::int64_t connection = 0; ///< counts from 1 in the order of acceptance
    std::string method = {};
    std::string target = {};     ///< as sent: path and query
    std::string path = {};       ///< the target up to the query
    std::string head = {};       ///< the bytes as they came, request line to the empty line
    std::string body = {};       ///< the first Options::recordedBodyBytes of the body, transfer coding removed
    std::int64_t bodyLength = 0; ///< of the whole body, as far as it has come
    std::string bodyDigest = {}; ///< of the whole body, by Options::digest; set once it has been read
    bool bodyComplete = false;
    int status = 0;                 ///< of the answer, 0 until its head is under way
    std::int64_t sentBodyBytes = 0; ///< of the answer, as they are on the wire
    bool finished = false;          ///< nothing more will be received or sent for this request

    /// The value of a request header, names compared without case; several of a name are joined by ", ". Empty if
    /// absent.
    std::string header(const std::string& name) const;
    /// How often a request header occurs.
    int headerCount(const std::string& name) const;
};

} // namespace standin
