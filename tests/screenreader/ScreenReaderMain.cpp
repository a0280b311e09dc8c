#include "tests/desktop/Desktop.h"
#include "tests/kit/ScreenMain.h"
#include "tests/screenreader/AccessBus.h"

namespace {

/// The bus starts programs that look for the screen.
struct ScreenWithBus
{
    QString error() const { return desktop.error() + bus.error(); }

    tests::Desktop desktop;
    tests::AccessBus bus;
};

} // namespace

int main(int argc, char** argv)
{
    return tests::runTestsOn<ScreenWithBus>(argc, argv);
}
