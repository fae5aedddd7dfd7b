# Cross build for Windows x86-64 with Debian's mingw-w64 (POSIX threads), run under Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(ZBASIC_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${ZBASIC_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZBASIC_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${ZBASIC_MINGW_TRIPLE}-windres)
set(CMAKE_STRIP ${ZBASIC_MINGW_TRIPLE}-strip)
set(CMAKE_OBJCOPY ${ZBASIC_MINGW_TRIPLE}-objcopy)
set(CMAKE_OBJDUMP ${ZBASIC_MINGW_TRIPLE}-objdump)

# Headers and libraries of this machine must never be taken for those of the target.
# ZBASIC_DEPS names the folders of what scripts/build-deps.sh has built.
# CMAKE_PREFIX_PATH names what a project uses of others, this library for one.
set(CMAKE_FIND_ROOT_PATH /usr/${ZBASIC_MINGW_TRIPLE} ${ZBASIC_DEPS} ${CMAKE_PREFIX_PATH})
list(APPEND CMAKE_PREFIX_PATH ${ZBASIC_DEPS})
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZBASIC_DEPS)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Lets CTest and custom commands run our programs as they are. An installed copy of this file has
# no such script beside it.
if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/wine-run)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run)
endif()
