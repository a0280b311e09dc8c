#include <chrono>
#include <cstdio>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

pid_t start(char** command)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error = posix_spawnp(&process, command[0], &actions, nullptr, command, environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? process : 0;
}

} // namespace

// Runs a command and prints its seconds and its peak memory in bytes. A program of its own because a process counts the
// memory of the one that started it as its own until then: whoever starts the command must be small.
int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    const auto begin = std::chrono::steady_clock::now();
    const pid_t process = start(argv + 1);
    if (process == 0)
        return 1;
    int status = 0;
    rusage usage{};
    wait4(process, &status, 0, &usage);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    std::printf("%.9f %lld\n", elapsed.count(), 1024LL * usage.ru_maxrss);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
}
