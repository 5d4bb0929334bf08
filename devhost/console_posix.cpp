#include "devhost/console.h"

namespace devhost {

bool joinConsole()
{
    return true;
}

} // namespace devhost
