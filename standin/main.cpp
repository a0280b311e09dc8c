#include "standin/Server.h"

#include <csignal>
#include <cstdio>

int main()
{
    sigset_t endings;
    sigemptyset(&endings);
    sigaddset(&endings, SIGINT);
    sigaddset(&endings, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);

    standin::Server server;
    server.addUser("demo", "demo");
    server.addIssue("DEMO-1");
    std::printf("listening on %s\n", server.url().c_str());
    std::fflush(stdout);
    int signal = 0;
    sigwait(&endings, &signal);
    return 0;
}
