# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Fails if a file of EXAMPLES doesn't stand on PAGE as it is, but for the comment that it begins with. Code
# that is to be copied stands on its page in full, as copying a snippet brings in other kinds of spaces.

cmake_minimum_required(VERSION 3.22)

file(READ ${PAGE} page)
foreach(example IN LISTS EXAMPLES)
    file(READ ${example} code)
    string(REGEX REPLACE "^((//|#)[^\n]*\n)+" "" code "${code}")
    string(REGEX REPLACE "\n([^\n])" "\n    \\1" code "\n${code}")
    string(FIND "${page}" "${code}" position)
    if(NOT code MATCHES "[a-z]" OR position EQUAL -1)
        message(FATAL_ERROR "${PAGE} doesn't have what stands in ${example}.")
    endif()
endforeach()
