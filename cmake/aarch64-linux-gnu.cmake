# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Builds for 64-bit Arm with Debian's cross compiler; CMAKE_SYSROOT tells where the device's files are.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L ${CMAKE_SYSROOT})
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CMAKE_SYSROOT)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
