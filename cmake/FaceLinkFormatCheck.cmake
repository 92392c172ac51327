# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Tests that every source has the format of .clang-format.

find_program(CLANG_FORMAT NAMES clang-format-14 clang-format)
if(NOT CLANG_FORMAT)
    message(WARNING "There is no clang-format, so the format of the sources is not tested.")
    return()
endif()

file(GLOB_RECURSE formatted_sources CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/benchmarks/*.cpp
    ${PROJECT_SOURCE_DIR}/examples/*.cpp ${PROJECT_SOURCE_DIR}/examples/*.h
    ${PROJECT_SOURCE_DIR}/include/*.h
    ${PROJECT_SOURCE_DIR}/plugins/*.cpp ${PROJECT_SOURCE_DIR}/plugins/*.h
    ${PROJECT_SOURCE_DIR}/src/*.cpp ${PROJECT_SOURCE_DIR}/src/*.h
    ${PROJECT_SOURCE_DIR}/tests/*.cpp ${PROJECT_SOURCE_DIR}/tests/*.h)
add_test(NAME format COMMAND ${CLANG_FORMAT} --dry-run --Werror ${formatted_sources})
