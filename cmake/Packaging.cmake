# `make package`: a Debian package built by CPack from the install rules. dpkg-shlibdeps
# works the library dependencies out from the installed binaries.
set(QB_PACKAGE_RELEASE 1)
set(QB_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/quillbox2)
# Debian's documentation files: the machine-readable copyright file, which points at the
# system's copy of the licence, and the changelog, gzipped without a time stamp.
install(FILES ${CMAKE_SOURCE_DIR}/resources/debian/copyright DESTINATION ${QB_DOC_DIR})
configure_file(${CMAKE_SOURCE_DIR}/resources/debian/changelog.in
               ${CMAKE_BINARY_DIR}/debian/changelog.Debian @ONLY)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/debian/changelog.Debian.gz
  COMMAND gzip -9nkf ${CMAKE_BINARY_DIR}/debian/changelog.Debian
  DEPENDS ${CMAKE_BINARY_DIR}/debian/changelog.Debian
  COMMENT "Compressing the Debian changelog")
add_custom_target(debian_changelog ALL DEPENDS ${CMAKE_BINARY_DIR}/debian/changelog.Debian.gz)
install(FILES ${CMAKE_BINARY_DIR}/debian/changelog.Debian.gz DESTINATION ${QB_DOC_DIR})
install(FILES ${CMAKE_SOURCE_DIR}/resources/debian/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME quillbox2)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillbox2)
set(CPACK_PACKAGE_VENDOR "The Quillbox2 developers")
set(CPACK_PACKAGE_CONTACT "The Quillbox2 developers <developers@quillbox2.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
# The long description under the summary: lines of at most 80 columns; CPack indents
# each by one space.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Quillbox2 keeps a personal collection of quotes and writes one of them at a
time into a plain-text signature file that a mail client reads. A small helper
can swap in a random quote at a fixed interval.")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${QB_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_SECTION mail)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://quillbox2.org/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt loads its SVG support as a plug-in, which no binary links, so dpkg-shlibdeps cannot
# see that the icons need it. Newer Debian releases ship the plug-ins in a package of
# their own, which scripts/install-deps.sh installs where it exists.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6")
execute_process(COMMAND dpkg-query -W -f=\${Status} qt6-svg-plugins
                OUTPUT_VARIABLE QB_SVG_PLUGINS_STATUS ERROR_QUIET)
if(QB_SVG_PLUGINS_STATUS STREQUAL "install ok installed")
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", qt6-svg-plugins")
endif()
# Qt's own texts (standard buttons, command-line errors) in the user's language.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n")
include(CPack)
