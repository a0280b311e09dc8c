#include "tests/kit/ScreenMain.h"
#include "tests/wayland/Compositor.h"

int main(int argc, char** argv)
{
    return tests::runTestsOn<tests::Compositor>(argc, argv);
}
