# From Debian to 64-bit Windows, with mingw-w64 and POSIX threads (std::thread and the like).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 10)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Where tools/windows/libraries puts the libraries of others.
if(DEFINED ENV{XDG_CACHE_HOME})
    set(TESSARINE_WINDOWS_LIBRARIES $ENV{XDG_CACHE_HOME}/tessarine/windows)
else()
    set(TESSARINE_WINDOWS_LIBRARIES $ENV{HOME}/.cache/tessarine/windows)
endif()

# Libraries and headers come from there and from the compiler's own folder, never from Linux's; programs that take part
# in the build are Linux's.
set(CMAKE_FIND_ROOT_PATH ${TESSARINE_WINDOWS_LIBRARIES} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY BOTH)  # pkg-config names folders in full
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${TESSARINE_WINDOWS_LIBRARIES}/lib/pkgconfig)
set(PKG_CONFIG_ARGN --static)
