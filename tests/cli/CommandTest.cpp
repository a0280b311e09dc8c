#include "tests/cli/CommandTest.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace tests {

CommandTest::CommandTest(const standin::Options& options)
    : server(options)
    , environment(QProcessEnvironment::systemEnvironment())
{
    const auto place = [this](const QString& variable, const QString& name) {
        QDir(m_home.path()).mkdir(name);
        environment.insert(variable, m_home.filePath(name));
    };
    place(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("config"));
    place(QStringLiteral("XDG_DATA_HOME"), QStringLiteral("data"));
    place(QStringLiteral("TMPDIR"), QStringLiteral("tmp"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
}

QStringList CommandTest::arguments(const QStringList& command) const
{
    QStringList options;
    // One server under several names.
    for (const char* name : {"jira", "other", "a", "b", "c", "d"}) {
        options << QStringLiteral("--connect-to")
                << QStringLiteral("%1.example.test:80:127.0.0.1:%2").arg(QLatin1String(name)).arg(server.port());
    }
    options << QStringLiteral("--connect-to")
            << QStringLiteral("jira.example.test:8080:127.0.0.1:%1").arg(server.port());
    return options + command;
}

Result CommandTest::run(const QStringList& command, const QByteArray& input) const
{
    const auto tool = start(command);
    tool->sendInput(input);
    const int status = tool->status();
    return {status, tool->output(), tool->error()};
}

std::unique_ptr<ToolRun> CommandTest::start(const QStringList& command) const
{
    return std::make_unique<ToolRun>(arguments(command), environment, m_work.path());
}

std::unique_ptr<TerminalRun> CommandTest::startOnTerminal(const QStringList& command, unsigned short columns) const
{
    return std::make_unique<TerminalRun>(arguments(command), environment, m_work.path(), columns);
}

void CommandTest::logIn() const
{
    const QStringList command = {QStringLiteral("login"), QLatin1String(serverAddress), QStringLiteral("anna"),
                                 QStringLiteral("--password-stdin")};
    ASSERT_EQ(run(command, "secret\n"), Result({0, {}, {}}));
}

qint64 CommandTest::attach(const std::string& name, const std::string& bytes, const std::string& created)
{
    return server.addAttachment("ABC-1", {.fileName = name, .bytes = bytes, .created = created});
}

qint64 CommandTest::attachSynthetic(const std::string& name, qint64 size)
{
    return server.addAttachment("ABC-1", {.fileName = name, .syntheticSize = size});
}

void CommandTest::writeFile(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray CommandTest::readFile(const QString& name) const
{
    QFile file(QDir(m_work.path()).absoluteFilePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

QStringList CommandTest::workItems() const
{
    return QDir(m_work.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QStringList CommandTest::temporaryFiles() const
{
    const QString folder = environment.value(QStringLiteral("TMPDIR"));
    QStringList files;
    QDirIterator entry(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entry.hasNext())
        files.append(QDir(folder).relativeFilePath(entry.next()));
    return files;
}

std::ostream& operator<<(std::ostream& out, const Result& result)
{
    return out << "status " << result.status << "\n--- output\n"
               << result.output.toStdString() << "--- error\n"
               << result.error.toStdString() << "---";
}

} // namespace tests
