#pragma once

#include "tests/cli/TerminalRun.h"
#include "tests/cli/ToolRun.h"
#include "tests/kit/Jira.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <memory>

namespace tests {

/// The words of a command line without blanks inside words.
inline QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(u' ');
}

/// What a run of the tool left.
struct Result
{
    int status = -1;
    QByteArray output;
    QByteArray error;

    bool operator==(const Result& other) const = default;
};

std::ostream& operator<<(std::ostream& out, const Result& result);

/// A server, and the tool beside it with settings and folders of its own.
class CommandTest : public testing::Test
{
protected:
    using Result = tests::Result;
    static constexpr char serverAddress[] = "http://jira.example.test/";

    explicit CommandTest(const standin::Options& options = {});

    /// The command behind the options that lead to the server.
    QStringList arguments(const QStringList& command) const;
    Result run(const QStringList& command, const QByteArray& input = {}) const;
    std::unique_ptr<ToolRun> start(const QStringList& command) const;
    std::unique_ptr<TerminalRun> startOnTerminal(const QStringList& command, unsigned short columns = 80) const;
    void logIn() const;

    qint64 attach(const std::string& name, const std::string& bytes, const std::string& created = {});
    /// A file of this many bytes.
    qint64 attachSynthetic(const std::string& name, qint64 size);

    /// Of a file in the folder that the tool runs in.
    QString path(const QString& name) const { return m_work.filePath(name); }
    void writeFile(const QString& name, const QByteArray& bytes) const;
    QByteArray readFile(const QString& name) const;
    /// Everything in the folder that the tool runs in, hidden or not.
    QStringList workItems() const;
    /// Files, at any depth, in the folder for temporary ones.
    QStringList temporaryFiles() const;

    Jira server;
    QProcessEnvironment environment;

private:
    QTemporaryDir m_home;
    QTemporaryDir m_work;
};

} // namespace tests
