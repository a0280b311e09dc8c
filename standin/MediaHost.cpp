#include "standin/MediaHost.h"

#include "standin/Text.h"

namespace standin {

namespace {

constexpr std::string_view mediaPath = "/media/";
constexpr std::string_view ticketName = "ticket=";

} // namespace

Response sendToMedia(const AttachmentState& attachment, Jira& jira, const Options& options)
{
    std::string base = options.contentsBase;
    while (base.ends_with('/'))
        base.pop_back();
    return Response::empty(303).with("Location", base + std::string(mediaPath) +
                                                     percentEncoded(attachment.record.fileName) + "?" +
                                                     std::string(ticketName) + jira.openTicket(attachment.record.id));
}

bool isForMedia(const RequestHead& head, const Options& options)
{
    return !options.contentsBase.empty() && head.path().starts_with(mediaPath);
}

Response showMedia(const RequestHead& head, const Jira& jira)
{
    if (head.has("Authorization") || head.has("Cookie"))
        return Response::text(400, "Only one way to sign in is allowed: the ticket of the address.");
    const std::string& query = head.query();
    const auto attachment =
        query.starts_with(ticketName) ? jira.attachmentOfTicket(query.substr(ticketName.size())) : std::nullopt;
    if (!attachment || !attachment->content)
        return Response::text(403, "The ticket is not good.");
    Response response = Response::empty(200).with("Content-Type", attachment->record.mimeType);
    response.body = attachment->content;
    return response;
}

} // namespace standin
