#include "platform/foundation/ProcessExit.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>

// In which order things end, told on the standard output.

namespace {

using tljira::whenProcessExits;

struct Told
{
    explicit Told(const char* name)
        : m_name(name)
    {
    }
    ~Told() { std::puts(m_name); }

private:
    const char* m_name;
};

void makeVariablesAndAsk()
{
    static const Told earlier("earlier variable");
    whenProcessExits([] { std::puts("given first"); });
    whenProcessExits([] { std::puts("given last"); });
    static const Told later("later variable");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "without application") == 0) {
        makeVariablesAndAsk();
        return 0;
    }
    const QCoreApplication application(argc, argv);
    makeVariablesAndAsk();
    if (argc > 1 && std::strcmp(argv[1], "exit") == 0)
        std::exit(0);
    return 0;
}
