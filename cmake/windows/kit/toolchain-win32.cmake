# CMake toolchain file for 32-bit Windows, with Debian's mingw-w64 and the Qt of the kit that contains this file.
get_filename_component(kit "${CMAKE_CURRENT_LIST_DIR}" ABSOLUTE)
set(triplet i686-w64-mingw32)

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 6.1) # Windows 7
set(CMAKE_SYSTEM_PROCESSOR i686)

# Qt is built with POSIX threads; the compiler names without a suffix may select another thread model.
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

list(PREPEND CMAKE_PREFIX_PATH "${kit}")
set(CMAKE_FIND_ROOT_PATH "${kit}" "/usr/${triplet}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind INCLUDE LIBRARY PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()

set(CMAKE_CROSSCOMPILING_EMULATOR "${kit}/run-under-wine.sh")
