# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Debian packages: a package for each component of the installation.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr" OR NOT BGPDT_TOOL)
    message(FATAL_ERROR "Packages need -DCMAKE_INSTALL_PREFIX=/usr, which chooses the folders, and BGPDT_TOOL=ON: "
                        "use cmake --preset package.")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "BGP data types developers <bgp-datatype@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL plugin host library tool dev)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/host) # whose package is told below
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(soversion ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

# bgpdt_package(COMPONENT NAME SECTION TEXT [DEPENDENCY...])
macro(bgpdt_package component name section text)
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section})
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${text}")
    set(dependencies ${ARGN}) # ARGN is no variable in a macro
    list(JOIN dependencies ", " CPACK_DEBIAN_${key}_PACKAGE_DEPENDS)
    set(copyright_dir ${CMAKE_INSTALL_DATADIR}/doc/${name})
    install(FILES LICENSE RENAME copyright DESTINATION ${copyright_dir} COMPONENT ${component})
endmacro()
set(plugin libbgpdt-plugin)
set(host libbgpdt-host${soversion})
set(library libbgpdt${bgpdt_soversion})
bgpdt_package(plugin ${plugin} libs "BGP data types for a router's configuration framework: the plug-in")
bgpdt_package(host ${host} libs "BGP data types: the stand-alone host's library")
bgpdt_package(library ${library} libs "BGP data types: the library for every program"
    "${plugin} (= ${version})" "${host} (= ${version})")
bgpdt_package(tool bgpdt net "BGP data types: the command-line tool"
    "${plugin} (= ${version})" "${host} (= ${version})")
bgpdt_package(dev libbgpdt-dev libdevel "BGP data types: headers, and what CMake and pkg-config need"
    "${plugin} (= ${version})" "${host} (= ${version})" "${library} (= ${version})" liblua5.4-dev)
set(CPACK_DEBIAN_HOST_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_GENERATE_SHLIBS ON)
include(CPack)
