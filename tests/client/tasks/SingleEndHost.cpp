// A program that makes one application object after the other, with a job under way in each and no event loop that
// could quit.

#include "client/tasks/SingleEnd.h"

#include <QCoreApplication>

#include <cstdio>
#include <memory>

namespace {

class Job : public client::SingleEnd
{
public:
    static void begin() { std::make_shared<Job>()->keep(); }

private:
    void stop() override { std::puts("stopped"); }
    void tell() override { std::puts("told"); }
};

} // namespace

int main(int argc, char** argv)
{
    for (int time = 0; time < 2; ++time) {
        const QCoreApplication application(argc, argv);
        Job::begin();
    }
    return 0;
}
