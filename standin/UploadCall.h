#pragma once

#include "standin/Call.h"
#include "standin/ContentWriter.h"
#include "standin/MultipartParser.h"

#include <optional>
#include <vector>

namespace standin {

/// POST rest/api/2/issue/KEY/attachments.
class UploadCall final : public Call
{
public:
    UploadCall(Request request, std::string issueKey, Jira& jira, const Options& options);

    void feed(std::string_view bytes) override;
    Response answer() override;

private:
    struct File
    {
        PartHeader header;
        ContentWriter writer;
        bool isTooLarge = false;
    };

    std::optional<Response> refusal() const;
    void begin(const PartHeader& header);
    void data(std::string_view bytes);
    Response store();

    const Request m_request;
    const std::string m_issueKey;
    Jira& m_jira;
    const Options& m_options;
    std::optional<Response> m_refusal;
    std::optional<MultipartParser> m_parser;
    std::vector<File> m_files;
    bool m_isInFile = false;
};

} // namespace standin
