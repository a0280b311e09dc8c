#pragma once

#include "cli/Arguments.h"

#include <QCommandLineParser>

namespace cli {

struct CommandDescription;

/// Makes sense of the command line. Options stand before or behind the command; "--" ends them.
class ArgumentParser
{
public:
    ArgumentParser();

    /// `words` starts with the program's name. Nothing when they are wrong; `error` then says in a sentence why.
    std::optional<Arguments> parse(const QStringList& words);
    const QString& error() const { return m_error; }

private:
    Arguments readOptions() const;
    std::optional<QString> value(const QString& option) const;
    std::optional<QString> problem(const Arguments& arguments) const;
    std::optional<QString> problemOfOptions(const CommandDescription& command) const;

    QCommandLineParser m_parser;
    QString m_error;
};

} // namespace cli
