# SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
# SPDX-License-Identifier: LGPL-2.1-or-later
# Installs the library as a Qt module: its headers, and what CMake, qmake and pkg-config find it by.

include(CMakePackageConfigHelpers)
include(ECMGenerateHeaders)
include(ECMSetupVersion)

set(package_folder ${KDE_INSTALL_CMAKEPACKAGEDIR}/Qt5FaceLink)
set(module_folder ${FACELINK_INSTALL_INCLUDEDIR}/QtFaceLink)
set(private_folder ${module_folder}/${PROJECT_VERSION}/QtFaceLink)

# Headers
file(GLOB public_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*.h)
set(private_headers ${public_headers})
list(FILTER public_headers EXCLUDE REGEX "_p\\.h$")
list(FILTER private_headers INCLUDE REGEX "_p\\.h$")

ecm_generate_headers(forwarding_headers
    HEADER_NAMES ${public_classes}
    COMMON_HEADER QtFaceLink
    RELATIVE ../include
    OUTPUT_DIR ${PROJECT_BINARY_DIR}/include/QtFaceLink)
# They take Qt's private headers, so the header of the whole module leaves them out.
ecm_generate_headers(forwarding_headers
    HEADER_NAMES ${private_api_classes}
    RELATIVE ../include
    OUTPUT_DIR ${PROJECT_BINARY_DIR}/include/QtFaceLink)

install(FILES ${public_headers} ${forwarding_headers} DESTINATION ${module_folder})
install(FILES ${private_headers} ${CMAKE_CURRENT_SOURCE_DIR}/decoding/qvideosurfaceoutput_p.h
    DESTINATION ${private_folder}/private)
if(NOT QtMultimediaPrivate_INCLUDE_DIR)
    install(DIRECTORY qtmultimedia/private DESTINATION ${private_folder})
endif()

# Library
target_include_directories(FaceLink INTERFACE
    $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
    $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include/QtFaceLink>
    $<INSTALL_INTERFACE:${FACELINK_INSTALL_INCLUDEDIR}>
    $<INSTALL_INTERFACE:${module_folder}>)
target_compile_definitions(FaceLink INTERFACE QT_FACELINK_LIB)

add_library(FaceLinkPrivate INTERFACE)
add_library(Qt5::FaceLinkPrivate ALIAS FaceLinkPrivate)
target_include_directories(FaceLinkPrivate INTERFACE
    $<INSTALL_INTERFACE:${module_folder}/${PROJECT_VERSION}>
    $<INSTALL_INTERFACE:${private_folder}>)
target_link_libraries(FaceLinkPrivate INTERFACE
    FaceLink Qt5::CorePrivate $<BUILD_INTERFACE:QtPrivate::Multimedia>)
if(QtMultimediaPrivate_INCLUDE_DIR)
    target_link_libraries(FaceLinkPrivate INTERFACE $<INSTALL_INTERFACE:Qt5::MultimediaPrivate>)
endif()

install(TARGETS FaceLink FaceLinkPrivate EXPORT Qt5FaceLinkTargets
    LIBRARY DESTINATION ${KDE_INSTALL_LIBDIR})

# CMake
ecm_setup_version(PROJECT
    VARIABLE_PREFIX FACELINK
    PACKAGE_VERSION_FILE ${CMAKE_CURRENT_BINARY_DIR}/Qt5FaceLinkConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/Qt5FaceLinkConfig.cmake.in
    Qt5FaceLinkConfig.cmake
    INSTALL_DESTINATION ${package_folder})
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/Qt5FaceLinkConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/Qt5FaceLinkConfigVersion.cmake
    DESTINATION ${package_folder})
install(EXPORT Qt5FaceLinkTargets NAMESPACE Qt5:: DESTINATION ${package_folder})

# qmake
facelink_relative_path(pri_includedir ${ECM_MKSPECS_INSTALL_DIR} ${FACELINK_INSTALL_INCLUDEDIR})
facelink_relative_path(pri_libdir ${ECM_MKSPECS_INSTALL_DIR} ${KDE_INSTALL_LIBDIR})
facelink_relative_path(pri_bindir ${ECM_MKSPECS_INSTALL_DIR} ${KDE_INSTALL_BINDIR})
if(QtMultimediaPrivate_INCLUDE_DIR)
    set(pri_private_depends multimedia_private)
endif()
foreach(file qt_lib_facelink.pri qt_lib_facelink_private.pri)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${file}.in ${file} @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${file} DESTINATION ${ECM_MKSPECS_INSTALL_DIR})
endforeach()

# pkg-config
set(pkgconfig_folder ${KDE_INSTALL_LIBDIR}/pkgconfig)
facelink_relative_path(pc_includedir ${pkgconfig_folder} ${FACELINK_INSTALL_INCLUDEDIR})
facelink_relative_path(pc_libdir ${pkgconfig_folder} ${KDE_INSTALL_LIBDIR})
configure_file(${PROJECT_SOURCE_DIR}/cmake/Qt5FaceLink.pc.in Qt5FaceLink.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/Qt5FaceLink.pc DESTINATION ${pkgconfig_folder})
