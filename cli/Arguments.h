#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace cli {

/// What the user asked for.
struct Arguments
{
    enum class Request { Command, Help, Version };

    Request request = Request::Command;
    QString command;
    /// What stands behind the command, as many as it takes.
    QStringList operands;

    QStringList routes;
    /// Of --proxy, --cacert and --user-agent.
    std::optional<QString> proxy;
    std::optional<QString> authorities;
    std::optional<QString> userAgent;
    bool isVerbose = false;
    bool wantsJSON = false;
    bool wantsAll = false;
    bool takesPasswordFromStandardInput = false;
    /// Of --token and --token-stdin.
    bool wantsToken = false;
    bool takesTokenFromStandardInput = false;
    bool wantsKeyring = false;
    /// Of --documents: extensions, or "all".
    QStringList documents;
    /// Of --name and --to.
    std::optional<QString> name;
    std::optional<QString> destination;
};

} // namespace cli
