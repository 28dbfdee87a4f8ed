# 64-bit Windows programs built on Debian, with the libraries of packaging/windows/libraries. The "posix" compiler has
# std::thread; "-static" links the compiler's libraries into each program, so that none of its DLLs is needed.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER /usr/bin/x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER /usr/bin/x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER /usr/bin/x86_64-w64-mingw32-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")
find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

cmake_path(SET VELDOR_WINDOWS_LIBRARIES NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../build/windows-libraries/prefix")
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 "${VELDOR_WINDOWS_LIBRARIES}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${VELDOR_WINDOWS_LIBRARIES}/lib/pkgconfig") # not the packages of this system
