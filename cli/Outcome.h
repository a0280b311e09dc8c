#pragma once

#include "platform/foundation/values/Error.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace cli {

/// The tool's exit statuses. A signal ends it with SignalBase and the signal's number.
namespace ExitStatus {
inline constexpr int Done = 0;
inline constexpr int Failed = 1;
inline constexpr int WrongUsage = 2;
inline constexpr int SignalBase = 128;
} // namespace ExitStatus

/// How a command ended.
struct Outcome
{
    /// `output` goes to standard output as it is.
    static Outcome done(QByteArray output = {});
    static Outcome failed(const QString& reason);
    /// Nothing as error stands for an answer that never came.
    static Outcome failed(const std::optional<tljira::Error>& error);

    int status = ExitStatus::Done;
    QByteArray output;
    QString reason;
};

} // namespace cli
