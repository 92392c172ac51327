# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Where things are installed: below the prefix, in a tree that can be moved, or with
# KDE_INSTALL_USE_QT_SYS_PATHS in the folders of the Qt that is built with.

include(KDEInstallDirs)
include(ECMQueryQt)
include(ECMGeneratePriFile)

if(KDE_INSTALL_USE_QT_SYS_PATHS)
    ecm_query_qt(FACELINK_INSTALL_DOCDIR QT_INSTALL_DOCS)
    ecm_query_qt(FACELINK_INSTALL_INCLUDEDIR QT_INSTALL_HEADERS)
    ecm_query_qt(FACELINK_INSTALL_TRANSLATIONSDIR QT_INSTALL_TRANSLATIONS)
    foreach(folder
            FACELINK_INSTALL_DOCDIR FACELINK_INSTALL_INCLUDEDIR FACELINK_INSTALL_TRANSLATIONSDIR)
        cmake_path(IS_PREFIX CMAKE_INSTALL_PREFIX ${${folder}} is_below_prefix)
        if(is_below_prefix)
            cmake_path(RELATIVE_PATH ${folder} BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX})
        endif()
    endforeach()
else()
    set(FACELINK_INSTALL_DOCDIR ${KDE_INSTALL_DATADIR}/qt5/doc)
    set(FACELINK_INSTALL_INCLUDEDIR ${KDE_INSTALL_INCLUDEDIR}/qt5)
    set(FACELINK_INSTALL_TRANSLATIONSDIR ${KDE_INSTALL_DATADIR}/qt5/translations)
endif()
set(FACELINK_INSTALL_MEDIASERVICEDIR ${KDE_INSTALL_QTPLUGINDIR}/mediaservice)

# facelink_relative_path(<variable> <from> <to>)
# The way from one installed folder to another one.
function(facelink_relative_path variable from to)
    foreach(folder from to)
        cmake_path(ABSOLUTE_PATH ${folder} BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE)
    endforeach()
    cmake_path(RELATIVE_PATH to BASE_DIRECTORY ${from})
    set(${variable} ${to} PARENT_SCOPE)
endfunction()

facelink_relative_path(library_folder ${KDE_INSTALL_BINDIR} ${KDE_INSTALL_LIBDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN/${library_folder})
