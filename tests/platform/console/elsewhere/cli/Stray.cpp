#include <unistd.h>

int closeInput()
{
    return ::close(0);
}
