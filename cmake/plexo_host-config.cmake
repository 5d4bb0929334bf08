include(CMakeFindDependencyMacro)
find_dependency(Qt5 5.15 COMPONENTS Widgets Network)
include(${CMAKE_CURRENT_LIST_DIR}/plexo_host-targets.cmake)
