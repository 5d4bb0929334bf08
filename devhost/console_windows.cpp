#include "devhost/console.h"

#include <cstdio>

#include <windows.h>

namespace devhost {

bool joinConsole()
{
    if (GetFileType(GetStdHandle(STD_ERROR_HANDLE)) != FILE_TYPE_UNKNOWN)
        return true; // whoever started it reads along
    if (!AttachConsole(ATTACH_PARENT_PROCESS))
        return false;
    return std::freopen("CONOUT$", "w", stdout) && std::freopen("CONOUT$", "w", stderr);
}

} // namespace devhost
