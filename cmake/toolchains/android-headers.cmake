# Compiles and links for Android without the NDK: Debian's clang and lld, over a system root that scripts/android.sh
# makes of Debian's headers and of libraries that have names and no code. It finds out whether the sources and the
# build fit Android; what it makes is looked at and not run. Shipping is the NDK's android.toolchain.cmake's.
#
# ANDROID_ABI              arm64-v8a, armeabi-v7a or x86_64
# KIVGLES_ANDROID_SYSROOT  what scripts/android.sh has made for that ABI

set(CMAKE_SYSTEM_NAME Android)
# "The toolchain file says it all": CMake looks for no NDK.
set(CMAKE_SYSTEM_VERSION 1)

# As the NDK's file names them.
set(ANDROID_PLATFORM_LEVEL 21)
set(ANDROID_STL c++_shared)
set(ANDROID_NDK_MAJOR 0)
if(ANDROID_ABI STREQUAL "arm64-v8a")
    set(CMAKE_SYSTEM_PROCESSOR aarch64)
elseif(ANDROID_ABI STREQUAL "armeabi-v7a")
    set(CMAKE_SYSTEM_PROCESSOR armv7a)
elseif(ANDROID_ABI STREQUAL "x86_64")
    set(CMAKE_SYSTEM_PROCESSOR x86_64)
else()
    message(FATAL_ERROR "ANDROID_ABI is arm64-v8a, armeabi-v7a or x86_64, not '${ANDROID_ABI}'")
endif()

set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET ${CMAKE_SYSTEM_PROCESSOR}-linux-android${ANDROID_PLATFORM_LEVEL})
set(CMAKE_SYSROOT ${KIVGLES_ANDROID_SYSROOT})
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ANDROID_ABI KIVGLES_ANDROID_SYSROOT)
# No program can be linked: there is no start-up code.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# The headers, in the order of the NDK's: C++, then the system's.
set(CMAKE_CXX_FLAGS_INIT "-nostdinc++")
foreach(folder IN ITEMS c++ c++/v1 android c)
    string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${CMAKE_SYSROOT}/usr/include/${folder}")
endforeach()
if(ANDROID_ABI STREQUAL "arm64-v8a")
    # The helpers would come from the NDK's own compiler library.
    string(APPEND CMAKE_CXX_FLAGS_INIT " -mno-outline-atomics")
endif()

# The libraries that the NDK's clang links by itself.
set(CMAKE_SHARED_LINKER_FLAGS_INIT
    "-Qunused-arguments -fuse-ld=lld -nostartfiles -nodefaultlibs -L${CMAKE_SYSROOT}/usr/lib")
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "-lc++_shared -lm -lc -ldl -lbuiltins")
set(CMAKE_CXX_STANDARD_LIBRARIES "${CMAKE_CXX_STANDARD_LIBRARIES_INIT}")

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
