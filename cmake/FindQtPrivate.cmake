# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Finds the private headers of Qt: those of Qt Core, and those of Qt Multimedia or our own
# declarations in their place.

find_package(Qt5Core CONFIG QUIET COMPONENTS Private)
if(NOT TARGET Qt5::CorePrivate)
    message(FATAL_ERROR "Qt FaceLink needs the private headers of Qt Core "
        "(Debian: qtbase5-private-dev).")
endif()

find_path(QtMultimediaPrivate_INCLUDE_DIR NAMES private/qmediaserviceprovider_p.h
    PATHS ${Qt5Multimedia_PRIVATE_INCLUDE_DIRS} NO_DEFAULT_PATH)
if(QtMultimediaPrivate_INCLUDE_DIR)
    set(QtPrivate_MULTIMEDIA_INCLUDE_DIR ${QtMultimediaPrivate_INCLUDE_DIR})
else()
    set(QtPrivate_MULTIMEDIA_INCLUDE_DIR ${PROJECT_SOURCE_DIR}/src/qtmultimedia)
endif()
message(STATUS "Private headers of Qt Multimedia: ${QtPrivate_MULTIMEDIA_INCLUDE_DIR}")

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(QtPrivate REQUIRED_VARS QtPrivate_MULTIMEDIA_INCLUDE_DIR)

if(NOT TARGET QtPrivate::Multimedia)
    add_library(QtPrivate::Multimedia INTERFACE IMPORTED)
    target_include_directories(QtPrivate::Multimedia INTERFACE ${QtPrivate_MULTIMEDIA_INCLUDE_DIR})
    target_link_libraries(QtPrivate::Multimedia INTERFACE Qt5::Multimedia Qt5::CorePrivate)
endif()
