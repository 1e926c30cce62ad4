# What `cmake --install` puts under the prefix, and the Debian package that
# CPack makes of it (scripts/package):
#   bin/lantern                         the reference host
#   lib/qrlantern/qrlantern.so          the module, where lantern looks for it
#   share/doc/qrlantern/                the reference and its pages, the license,
#                                       the examples
#   share/man/man1/lantern.1            the manual page
install(TARGETS qrlantern LIBRARY DESTINATION ${QRL_INSTALL_MODULEDIR})
if(TARGET lantern)
  install(TARGETS lantern RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES docs/lantern.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
install(FILES README.md LICENSE docs/functions.md DESTINATION ${QRL_INSTALL_DOCDIR})
# Where a Debian system looks for a package's license.
install(FILES LICENSE DESTINATION ${QRL_INSTALL_DOCDIR} RENAME copyright)
install(DIRECTORY examples DESTINATION ${QRL_INSTALL_DOCDIR})
# The pages that the reference's examples open, beside the reference.
install(DIRECTORY docs/pages DESTINATION ${QRL_INSTALL_DOCDIR})

set(CPACK_PACKAGE_NAME qrlantern)
set(CPACK_PACKAGE_VENDOR "qrLantern")
set(CPACK_PACKAGE_CONTACT "qrLantern developers <qrlantern@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "scripting-host extender with a live browser and an HTML document reader")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
  "qrLantern is an extender module that a scripting host loads: 35 script functions drive a live "
  "browser (WebKitGTK) and read the page it shows, or a script's own markup, by element handles. "
  "lantern, the reference host, runs Lua scripts against it, and has a prompt for trying it by hand.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
# qrlantern_<version>_<architecture>.deb, the architecture from dpkg.
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION web)
# The runtime libraries (WebKitGTK, GTK, Lua, libedit, the C++ runtime) are
# read off the binaries by dpkg-shlibdeps.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xvfb, xauth")
include(CPack)
