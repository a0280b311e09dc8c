#pragma once

#include "tests/docs/Markdown.h"

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

namespace tests::docs {

/// How a program ended, and all that it printed.
struct Outcome
{
    int status = -1;
    QString output;
};

/// A user's home with nothing in it but what the documents speak of: the installed framework, a document
/// "plan.tessaloom" of 20 bytes, "password.txt", "token.txt", an empty folder "plans", and a stand-in server that knows
/// the user anna with that password and that personal access token, and the issue DEMO-1.
class Workshop
{
public:
    Workshop();
    ~Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    QString path(const QString& name) const { return m_home.filePath(name); }
    void write(const QString& name, const QString& text) const;
    /// Makes files of those blocks that name one.
    void writeFilesOf(const Document& document) const;

    Outcome run(const QString& program, const QStringList& arguments, const QString& folder = {}) const;
    /// Runs lines of a shell, with what CONTRIBUTING.md says of the names in them.
    Outcome shell(const QString& lines) const;

    /// The route to the stand-in for http://jira.example.com.
    QString route() const;

private:
    void startServer();

    QTemporaryDir m_home;
    QProcess m_server;
    QString m_port;
};

} // namespace tests::docs
