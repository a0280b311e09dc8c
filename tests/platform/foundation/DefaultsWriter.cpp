#include "platform/foundation/settings/UserDefaults.h"

#include <cstdlib>

// DefaultsWriter PATH PREFIX COUNT: sets PREFIX0, PREFIX1, … to their numbers, one after another.
int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    tljira::UserDefaults defaults(QString::fromLocal8Bit(argv[1]));
    const QString prefix = QString::fromLocal8Bit(argv[2]);
    const int count = std::atoi(argv[3]);
    for (int number = 0; number < count; ++number)
        defaults.setObject(number, prefix + QString::number(number));
    for (int attempt = 0; attempt < 10; ++attempt) {
        if (defaults.synchronize())
            return 0;
    }
    return 1;
}
