# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Tests that every source has the format of .clang-format.

find_program(CLANG_FORMAT NAMES clang-format-14 clang-format)
if(NOT CLANG_FORMAT)
    message(WARNING "There is no clang-format, so the format of the sources is not tested.")
    return()
endif()

foreach(folder benchmarks examples include plugins src tests tools)
    list(APPEND patterns ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/*.h)
endforeach()
file(GLOB_RECURSE formatted_sources CONFIGURE_DEPENDS ${patterns})
add_test(NAME format COMMAND ${CLANG_FORMAT} --dry-run --Werror ${formatted_sources})
