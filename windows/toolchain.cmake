# Cross-compiling for 64-bit Windows with Debian's compiler (g++-mingw-w64-x86-64-posix) and the Qt that
# windows/qt built into the folder KBX_WINDOWS_QT.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

set(CMAKE_FIND_ROOT_PATH $ENV{KBX_WINDOWS_QT} /usr/${triplet})
set(CMAKE_PREFIX_PATH $ENV{KBX_WINDOWS_QT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Tests run under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine)
