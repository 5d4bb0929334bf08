# The Debian package: `cpack` in a configured build folder makes it from what Install.cmake puts where.

install(FILES ${CMAKE_SOURCE_DIR}/cmake/plexo-devhost.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/resources/svg/program.svg RENAME plexo-devhost.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES README.md CHANGELOG.md docs/simulated-device.md docs/host-guide.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/plexo-devhost)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME plexo-devhost)
set(CPACK_PACKAGE_CONTACT "TarnKBX editor maintainers <maintainers@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Development host, TarnKBX editor and simulated device")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
# What the programs are linked to; and what Qt loads by name when the block diagram is shown, and letters.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/bin)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml-module-qtquick2, qml-module-qtquick-window2, fonts-dejavu-core | fonts-liberation")
include(CPack)
