# Compiles for Debian's ARM64 with its cross compiler, over the libraries of that architecture that are installed
# beside this machine's own (libegl-dev:arm64 and so on), and runs what was made under qemu's emulation of a process.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64-static)

# pkg-config would find this machine's own.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)
