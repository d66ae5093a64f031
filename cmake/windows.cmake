# Toolchain: Windows programs from Debian, by the mingw-w64 compilers. MERVANE_WINDOWS_WIDTH is 32 or 64.
# The 32-bit code asks for SSE2 and computes in it, and realigns the stack where a foreign caller may come in.

set(CMAKE_SYSTEM_NAME Windows)
set(MERVANE_WINDOWS_WIDTH 64 CACHE STRING "Width of the Windows programs, 32 or 64.")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MERVANE_WINDOWS_WIDTH)
if(MERVANE_WINDOWS_WIDTH EQUAL 32)
  set(CMAKE_SYSTEM_PROCESSOR i686)
  set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
else()
  set(CMAKE_SYSTEM_PROCESSOR x86_64)
endif()

set(triple ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
# The variant with the threads of the C++ standard library.
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(MERVANE_IDL_COMPILER ${triple}-widl)

# The runtimes go into the program: it needs no file beside it.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine_run;${MERVANE_WINDOWS_WIDTH})
