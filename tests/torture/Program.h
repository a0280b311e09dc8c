#pragma once

#include "tests/torture/Board.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QStringList>

#include <chrono>
#include <memory>

namespace torture {

/// What is to happen to a program.
struct Orders
{
    Function function = Function::Count;
    std::uint32_t call = 0;
    bool lasts = false;
    std::int32_t error = 0;
    std::uint32_t killAtChange = 0;
    bool killHalfway = false;
    bool logsChanges = false;
    /// SIGKILL comes after this time; 0: never.
    std::chrono::microseconds killAfter{0};
};

/// How a program ended.
struct Run
{
    int status = -1;
    int signal = 0; ///< that ended it
    bool hasHung = false;
    QByteArray output;
    QByteArray error;
    std::chrono::microseconds time{0};

    std::array<std::uint32_t, functionCount> calls = {};
    std::uint32_t changes = 0;
    std::uint32_t refusals = 0;
    bool wasOutputSilenced = false;
    bool wasErrorSilenced = false;
    QByteArray firstRefused;
};

struct Command
{
    QString program;
    QStringList arguments;
    QProcessEnvironment environment;
    QString folder;
    QString input; ///< a file; empty: none
};

/// Runs programs with the preloaded library, one after the other.
class Program
{
public:
    /// Board and log of changes lie in this folder.
    explicit Program(const QString& folder);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Run run(const Command& command, const Orders& orders = {});
    /// Of the last run whose changes were logged.
    QString changesPath() const { return m_changesPath; }

private:
    void give(const Orders& orders);
    void take(Run& run) const;

    QString m_boardPath;
    QString m_changesPath;
    Board* m_board = nullptr;
};

} // namespace torture
