# What `cmake --install` puts where. Programs and plugin share a folder, because the host looks for the simulated
# device and the plugin beside itself; bin/ has links to the programs.

set(home ${CMAKE_INSTALL_LIBDIR}/tarnkbx)
if(WIN32)
    set(home ${CMAKE_INSTALL_BINDIR})
endif()
set_target_properties(plexo-devhost tarnkbx_plugin PROPERTIES INSTALL_RPATH "$ORIGIN/..")
install(TARGETS plexo-devhost kbx-simulator tarnkbx_plugin RUNTIME DESTINATION ${home} LIBRARY DESTINATION ${home})
if(NOT WIN32)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/links)
    foreach(program plexo-devhost kbx-simulator)
        file(CREATE_LINK ../${home}/${program} ${CMAKE_BINARY_DIR}/links/${program} SYMBOLIC)
        install(FILES ${CMAKE_BINARY_DIR}/links/${program} DESTINATION ${CMAKE_INSTALL_BINDIR})
    endforeach()
endif()

# What another plugin for the same host is built against: find_package(plexo_host), then plexo::host.
set_target_properties(plexo_host PROPERTIES EXPORT_NAME host)
install(TARGETS plexo_host EXPORT plexo_host)
install(DIRECTORY host DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/plexo FILES_MATCHING PATTERN *.h)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/plexo_host)
install(EXPORT plexo_host NAMESPACE plexo:: FILE plexo_host-targets.cmake DESTINATION ${package})
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/plexo_host-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES cmake/plexo_host-config.cmake ${CMAKE_BINARY_DIR}/plexo_host-config-version.cmake
    DESTINATION ${package})
