# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Warnings, and the sanitizers where they are asked for.

add_compile_options(-Wall -Wextra)
if(FACELINK_WERROR)
    add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)

if(FACELINK_SANITIZE STREQUAL "address")
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
elseif(FACELINK_SANITIZE STREQUAL "thread")
    add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
    add_link_options(-fsanitize=thread)
endif()
