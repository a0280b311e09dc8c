#include "tests/desktop/Desktop.h"
#include "tests/kit/ScreenMain.h"

int main(int argc, char** argv)
{
    return tests::runTestsOn<tests::Desktop>(argc, argv);
}
