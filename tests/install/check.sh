#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Builds and runs what uses the installed library.
#   check.sh STEP PREFIX SCRATCH [BUILD]
# PREFIX is where the library is installed, /usr for installed packages. The step "prefix" installs BUILD
# there, by way of another folder. The other steps are backend, cmake, qmake, pkgconfig and tools; "all"
# is all of these.

set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
step=$1 prefix=$2 scratch=$3 build=${4:-}

# folder_of NAME: the folder of an installed file.
folder_of() {
    local file
    file=$(find "$prefix" -name "$1" -print -quit)
    [ -n "$file" ] || { echo "There is no $1 in $prefix." >&2; return 1; }
    dirname "$file"
}

find_installed_files() {
    library_folder=$(folder_of libQt5FaceLink.so.0)
    plugins=$(dirname "$(folder_of libfacelink_gstreamer.so)")
    [ "$prefix" = /usr ] && return
    CMAKE_PREFIX_PATH=$prefix
    PKG_CONFIG_PATH=$(folder_of Qt5FaceLink.pc)
    QMAKEPATH=$(folder_of qt_lib_facelink.pri)
    QMAKEPATH=${QMAKEPATH%/mkspecs/modules}
    export CMAKE_PREFIX_PATH PKG_CONFIG_PATH QMAKEPATH
}

enter_empty_folder() {
    rm -rf "$1"
    mkdir -p "$1"
    cd "$1"
}

run_prefix() {
    rm -rf "$prefix" "$scratch/elsewhere"
    cmake --install "$build" --prefix "$scratch/elsewhere" >/dev/null
    mv "$scratch/elsewhere" "$prefix"
    if grep -rl "$scratch/elsewhere" "$prefix"; then
        echo "These files name the folder that they were installed in." >&2
        return 1
    fi
}

# use PROGRAM: runs it with the backend that was built outside, and with the installed one.
use() {
    local library
    library=$(LD_LIBRARY_PATH=$library_folder ldd "$1" | sed -n 's/.*libQt5FaceLink.so.0 => \(.*\) (.*/\1/p')
    [ "$(realpath "$library")" = "$(realpath "$library_folder/libQt5FaceLink.so.0")" ]
    LD_LIBRARY_PATH=$library_folder QT_PLUGIN_PATH=$scratch/backend "$1" RLE
    LD_LIBRARY_PATH=$library_folder QT_PLUGIN_PATH=$plugins "$1" VP8
}

run_backend() {
    enter_empty_folder "$scratch/backend"
    cmake -G Ninja "$source/../../examples/minimalbackend" >/dev/null
    cmake --build .
}

run_cmake() {
    enter_empty_folder "$scratch/cmake"
    cmake -G Ninja "$source/consumer-cmake" >/dev/null
    cmake --build .
    use ./consumer
    use ./private-consumer
}

run_qmake() {
    local program
    for program in consumer private-consumer; do
        enter_empty_folder "$scratch/qmake/$program"
        qmake "$source/consumer-qmake/$program.pro"
        make
        use "./$program"
    done
}

run_pkgconfig() {
    enter_empty_folder "$scratch/pkgconfig"
    make -f "$source/consumer-pkgconfig/Makefile"
    use ./consumer
}

# expect STATUS TEXT COMMAND...: the command's exit status, and a text that it writes in German.
expect() {
    local expected=$1 text=$2 status=0
    shift 2
    LANGUAGE=de "$@" > "$scratch/output.txt" 2>&1 || status=$?
    grep "$text" "$scratch/output.txt"
    [ $status = "$expected" ]
}

run_tools() {
    export QT_PLUGIN_PATH=$plugins
    expect 0 '"id": "vp8enc"' "$prefix/bin/facelink-info" --json
    expect 0 '1280x720' "$prefix/bin/facelink-info" --viewfinder-settings
    expect 0 'Kameras:' "$prefix/bin/facelink-info"
    expect 0 'vp8enc' "$prefix/bin/facelink-call" --list-codecs
    expect 1 'braucht eine Zahl' "$prefix/bin/facelink-call" --fps 0
    [ "$prefix" = /usr ] && return

    unset QT_PLUGIN_PATH
    printf '[Paths]\nPlugins=none\n' > "$prefix/bin/qt.conf"
    expect 2 'Es gibt kein Backend' "$prefix/bin/facelink-info"
    rm "$prefix/bin/qt.conf"
}

mkdir -p "$scratch"
[ "$step" = prefix ] || find_installed_files
if [ "$step" = all ]; then
    for step in backend cmake qmake pkgconfig tools; do
        "run_$step"
    done
else
    "run_$step"
fi
