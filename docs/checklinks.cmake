# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Fails if a link, a picture or an anchor of the pages in FOLDER leads nowhere. Of links to elsewhere only
# the form is checked, as there may be no network.

cmake_minimum_required(VERSION 3.22)

file(GLOB pages RELATIVE ${FOLDER} ${FOLDER}/*.html)
foreach(page IN LISTS pages)
    file(READ ${FOLDER}/${page} text)
    # Each would mean something in a list.
    string(REGEX REPLACE "[][;\\]" "_" text "${text}")
    string(REGEX MATCHALL " (id|name)=\"[^\"]*\"" anchors_${page} "${text}")
    string(REGEX MATCHALL " (href|src|data)=\"[^\"]*\"" links_${page} "${text}")
endforeach()

set(count 0)
set(dead)
foreach(page IN LISTS pages)
    foreach(link IN LISTS links_${page})
        string(REGEX REPLACE "^ [a-z]+=\"(.*)\"$" "\\1" target "${link}")
        math(EXPR count "${count} + 1")
        if(target MATCHES "^https?:")
            if(NOT target MATCHES "^https?://[a-z0-9.-]+\\.[a-z]+(/[^ ]*)?$")
                list(APPEND dead "${page}: ${target}")
            endif()
            continue()
        endif()
        set(file ${target})
        set(anchor)
        if(target MATCHES "^([^#]*)#(.*)$")
            set(file ${CMAKE_MATCH_1})
            set(anchor ${CMAKE_MATCH_2})
        endif()
        if(NOT file)
            set(file ${page})
        endif()
        if(NOT EXISTS ${FOLDER}/${file})
            list(APPEND dead "${page}: ${target}")
        elseif(anchor AND NOT " id=\"${anchor}\"" IN_LIST anchors_${file}
               AND NOT " name=\"${anchor}\"" IN_LIST anchors_${file})
            list(APPEND dead "${page}: ${target}")
        endif()
    endforeach()
endforeach()

if(count EQUAL 0)
    message(FATAL_ERROR "There are no links in ${FOLDER}.")
elseif(dead)
    list(REMOVE_DUPLICATES dead)
    list(JOIN dead "\n  " dead)
    message(FATAL_ERROR "Dead links:\n  ${dead}")
endif()
message("${count} links are alive.")
