#include "standin/UploadCall.h"

#include "standin/JiraJson.h"
#include "standin/MimeType.h"
#include "standin/Text.h"

#include <QJsonArray>

#include <algorithm>

namespace standin {

namespace {

bool passesXsrfCheck(const RequestHead& head)
{
    const auto token = head.header("X-Atlassian-Token");
    const auto agent = head.header("User-Agent");
    const bool isBrowser = agent.starts_with("Mozilla/") || agent.starts_with("Opera/");
    return !isBrowser && (equalsIgnoringCase(token, "nocheck") || equalsIgnoringCase(token, "no-check"));
}

bool isForm(std::string_view contentType)
{
    return equalsIgnoringCase(trimmed(contentType.substr(0, contentType.find(';'))), "multipart/form-data");
}

std::optional<std::string> boundaryOf(const std::string& contentType)
{
    const auto boundary = HeaderParameters(contentType).value("boundary");
    return boundary && !boundary->empty() ? boundary : std::nullopt;
}

} // namespace

UploadCall::UploadCall(Request request, std::string issueKey, Jira& jira, const Options& options)
    : m_request(std::move(request))
    , m_issueKey(std::move(issueKey))
    , m_jira(jira)
    , m_options(options)
    , m_refusal(refusal())
{
    const auto boundary = boundaryOf(m_request.head.header("Content-Type"));
    if (m_refusal || !boundary)
        return;
    m_parser.emplace(*boundary, MultipartParser::Handler{
                                    .begin = [this](const PartHeader& header) { begin(header); },
                                    .data = [this](std::string_view bytes) { data(bytes); },
                                    .end = [this] { m_isInFile = false; },
                                });
}

std::optional<Response> UploadCall::refusal() const
{
    if (!passesXsrfCheck(m_request.head))
        return Response::text(m_options.xsrfStatus, "XSRF check failed");
    if (!isForm(m_request.head.header("Content-Type")))
        return Response::error(415, "Unsupported Media Type");
    const auto issue = m_jira.issue(m_issueKey);
    if (!issue)
        return Response::error(404, "Issue Does Not Exist");
    if (issue->hiddenStatus != 0)
        return Response::error(issue->hiddenStatus, "You do not have the permission to see the specified issue.");
    if (!m_jira.allowsAttachments())
        return Response::error(403, "Attachments are disabled, or you do not have permission to create them.");
    return std::nullopt;
}

void UploadCall::feed(std::string_view bytes)
{
    if (m_parser)
        m_parser->feed(bytes);
}

void UploadCall::begin(const PartHeader& header)
{
    m_isInFile = header.fieldName == "file" && header.fileName && !header.fileName->empty();
    if (m_isInFile)
        m_files.push_back({.header = header, .writer = ContentWriter(m_options.storage, m_options.digest)});
}

void UploadCall::data(std::string_view bytes)
{
    if (!m_isInFile)
        return;
    auto& file = m_files.back();
    file.writer.add(bytes);
    if (m_options.maximumFileSize > 0 && file.writer.size() > m_options.maximumFileSize && !file.isTooLarge) {
        file.isTooLarge = true;
        file.writer.discard();
    }
}

Response UploadCall::answer()
{
    if (m_refusal)
        return *m_refusal;
    if (!m_parser)
        return Response::error(500, "the request was rejected because no multipart boundary was found");
    if (!m_parser->isComplete())
        return Response::error(500, "Stream ended unexpectedly");
    if (m_files.empty())
        return Response::error(500, "The form has no file with a name");
    if (std::any_of(m_files.begin(), m_files.end(), [](const File& file) { return file.isTooLarge; }))
        return Response::error(404, "The field file exceeds its maximum permitted size of " +
                                        std::to_string(m_options.maximumFileSize) + " bytes.");
    if (!std::all_of(m_files.begin(), m_files.end(), [](const File& file) { return file.writer.isGood(); }))
        return Response::error(500, "The file could not be stored");
    return store();
}

Response UploadCall::store()
{
    QJsonArray stored;
    for (auto& file : m_files) {
        AttachmentState attachment;
        attachment.record.issueKey = m_issueKey;
        attachment.record.fileName = *file.header.fileName;
        attachment.record.mimeType =
            file.header.contentType.empty() ? mimeTypeOf(*file.header.fileName) : file.header.contentType;
        attachment.record.author = m_request.user.value_or(std::string());
        attachment.record.size = file.writer.size();
        attachment.record.digest = file.writer.digest();
        attachment.content = file.writer.finish();
        const auto id = m_jira.addAttachment(std::move(attachment));
        if (const auto added = m_jira.attachment(id))
            stored.append(attachmentJson(*added, m_request.base, m_options));
    }
    return Response::json(200, stored);
}

} // namespace standin
