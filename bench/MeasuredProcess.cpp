#include "bench/MeasuredProcess.h"

#include <chrono>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

pid_t start(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error = posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::runtime_error("cannot start " + command.front());
    return process;
}

} // namespace

Measurement measureProcess(const std::vector<std::string>& command)
{
    const auto begin = std::chrono::steady_clock::now();
    const pid_t process = start(command);
    int status = 0;
    rusage usage{};
    wait4(process, &status, 0, &usage);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(command.front() + " failed");
    return {elapsed.count(), std::int64_t(usage.ru_maxrss) * 1024};
}

} // namespace bench
