# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` puts where, by component: plugin, host, library, tool and dev, and the modules lua, sqlite, python.
include(CMakePackageConfigHelpers)
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/bgp_datatype)
set(bgp_datatype_targets bgp_datatype_headers)
set_target_properties(bgp_datatype_headers PROPERTIES EXPORT_NAME headers)

install(TARGETS bgp_datatype LIBRARY DESTINATION ${bgpdt_plugin_dir} COMPONENT plugin)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/licenses/bgpdt COMPONENT plugin)
install(DIRECTORY include/bgp_datatype DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
if(BGPDT_HOST)
    list(APPEND bgp_datatype_targets bgpdt_host)
    set_target_properties(bgpdt_host PROPERTIES EXPORT_NAME host)
    install(FILES host/host.hpp host/registration.hpp host/script_record.hpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/bgpdt/host COMPONENT dev)
endif()
if(BGPDT_TOOL)
    install(TARGETS bgpdt RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
    install(FILES docs/man/bgpdt.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
    install(FILES docs/man/bgpdt-texts.7 DESTINATION ${CMAKE_INSTALL_MANDIR}/man7 COMPONENT tool)
    install(FILES docs/bgpdt.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/bgpdt COMPONENT tool)
    install(FILES completions/bgpdt.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
        COMPONENT tool)
    install(FILES completions/bgpdt.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME bgpdt
        COMPONENT tool)
    install(FILES completions/_bgpdt DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tool)
endif()

if(BGPDT_LIBRARY)
    install(TARGETS bgpdt_shared
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT dev)
    install(FILES include/bgpdt/bgpdt.h include/bgpdt/bgpdt.hpp DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/bgpdt
        COMPONENT dev)
    install(DIRECTORY docs/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man3 COMPONENT dev FILES_MATCHING PATTERN *.3)
endif()

install(TARGETS ${bgp_datatype_targets} EXPORT bgp_datatype
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT host NAMELINK_COMPONENT dev)
install(EXPORT bgp_datatype NAMESPACE bgp_datatype:: DESTINATION ${config_dir} FILE targets.cmake COMPONENT dev)
configure_package_config_file(packaging/config.cmake.in ${PROJECT_BINARY_DIR}/bgp_datatypeConfig.cmake
    INSTALL_DESTINATION ${config_dir} PATH_VARS bgpdt_plugin_dir)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/bgp_datatypeConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/bgp_datatypeConfig.cmake ${PROJECT_BINARY_DIR}/bgp_datatypeConfigVersion.cmake
    DESTINATION ${config_dir} COMPONENT dev)
if(BGPDT_LIBRARY)
    set(bgpdt_config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/bgpdt)
    configure_package_config_file(packaging/bgpdt_config.cmake.in ${PROJECT_BINARY_DIR}/bgpdtConfig.cmake
        INSTALL_DESTINATION ${bgpdt_config_dir} PATH_VARS CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
    write_basic_package_version_file(${PROJECT_BINARY_DIR}/bgpdtConfigVersion.cmake COMPATIBILITY SameMajorVersion)
    install(FILES ${PROJECT_BINARY_DIR}/bgpdtConfig.cmake ${PROJECT_BINARY_DIR}/bgpdtConfigVersion.cmake
        DESTINATION ${bgpdt_config_dir} COMPONENT dev)
endif()

# The files for pkg-config find their prefix from their own place.
file(RELATIVE_PATH pc_prefix "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
if(NOT BGPDT_LUA_DIR)
    set(pc_lua lua5.4)
endif()
foreach(pc IN ITEMS bgp_datatype bgpdt_host bgpdt)
    if(pc STREQUAL bgp_datatype OR (pc STREQUAL bgpdt_host AND BGPDT_HOST) OR (pc STREQUAL bgpdt AND BGPDT_LIBRARY))
        configure_file(packaging/${pc}.pc.in ${PROJECT_BINARY_DIR}/${pc}.pc @ONLY)
        install(FILES ${PROJECT_BINARY_DIR}/${pc}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
    endif()
endforeach()

# bgpdt_install_module(TARGET FOLDER COMPONENT): what other programs load, beside it the libraries that it needs
function(bgpdt_install_module target folder component)
    get_target_property(links ${target} LINK_LIBRARIES)
    if(bgpdt_shared IN_LIST links AND NOT bgpdt_system)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
        set(needed bgpdt_shared bgpdt_host bgp_datatype)
        install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/licenses/bgpdt
            COMPONENT ${component})
    endif()
    install(TARGETS ${target} ${needed} LIBRARY DESTINATION ${folder} COMPONENT ${component})
endfunction()
