# `make package`: a Debian package built by CPack from the install rules. dpkg-shlibdeps
# works the library dependencies out from the installed binaries.
install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quillbox2
        RENAME copyright)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillbox2)
set(CPACK_PACKAGE_VENDOR "The Quillbox2 developers")
set(CPACK_PACKAGE_CONTACT "The Quillbox2 developers <developers@quillbox2.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
    "Quillbox2 keeps a personal collection of quotes and writes one of them at a time into a plain-text signature file that a mail client reads. A small helper can swap in a random quote at a fixed interval.")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION mail)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://quillbox2.org/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt loads its SVG support as a plug-in, which no binary links, so dpkg-shlibdeps cannot
# see that the icons need it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6")
# Qt's own texts (standard buttons, command-line errors) in the user's language.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n")
include(CPack)
