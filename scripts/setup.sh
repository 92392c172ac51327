#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Installs what the build needs where it is missing, and builds a preset. Read by the scripts beside it.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

build_packages=(
    cmake extra-cmake-modules g++ ninja-build pkg-config
    libgstreamer-plugins-base1.0-dev libgstreamer1.0-dev
    qtbase5-dev qtbase5-private-dev qtmultimedia5-dev qttools5-dev qttools5-dev-tools
)
run_packages=(
    gstreamer1.0-libav gstreamer1.0-plugins-bad gstreamer1.0-plugins-base
    gstreamer1.0-plugins-good gstreamer1.0-plugins-ugly
)
test_packages=(
    clang-format doxygen ffmpeg forensics-samples-files gstreamer1.0-tools
    libbenchmark-dev make qhelpgenerator-qt5
)
package_packages=(
    build-essential debhelper doxygen lintian pkg-kde-tools qhelpgenerator-qt5
)
package_check_packages=(
    debootstrap
)
# What the programs are built with that use the installed packages.
consumer_packages=(
    cmake g++ make ninja-build pkg-config qtbase5-private-dev
)
# Those that run here; what is built with is fetched for Arm.
arm64_packages=(
    binutils cmake extra-cmake-modules g++-aarch64-linux-gnu ninja-build qemu-user
    qt5-qmake-bin qtbase5-dev-tools qttools5-dev-tools
)
quality_packages=(
    abigail-tools clang-tidy clazy codespell git reuse
)

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

# install_packages PACKAGE...: leaves the package system alone where everything is installed already.
install_packages() {
    local package missing=()
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] \
            || missing+=("$package")
    done
    [ ${#missing[@]} = 0 ] && return

    as_root apt-get update
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"
}

# build_preset PRESET
build_preset() {
    cd "$root"
    cmake --preset "$1"
    cmake --build --preset "$1"
}
