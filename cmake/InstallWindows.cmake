# The Windows release: a zip that CPack makes of what `cmake --install` puts
# under the prefix (scripts/package):
#   qrlantern-<version>-windows-<x86|x64>/
#     qrlantern.dll, lantern.exe     the module and the reference host, side by side
#     README.txt, QORMLANG.enu       CRLF text, as Windows editors expect it
#     LICENSE
#     docs/functions.html            the reference, one page with its contents
#     docs/lantern.html              the manual of lantern
#     docs/pages/                    the pages that the reference's examples open
#     examples/                      the examples and their pages
install(TARGETS qrlantern RUNTIME DESTINATION . LIBRARY DESTINATION .)
if(TARGET lantern)
  install(TARGETS lantern RUNTIME DESTINATION .)
endif()

set(release_text_dir ${CMAKE_BINARY_DIR}/release)
foreach(name README.txt QORMLANG.enu)
  set(source ${PROJECT_SOURCE_DIR}/packaging/windows/${name})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  file(READ ${source} text)
  string(REPLACE "\n" "\r\n" text "${text}")
  file(WRITE ${release_text_dir}/${name} "${text}")
  install(FILES ${release_text_dir}/${name} DESTINATION .)
endforeach()
install(FILES LICENSE DESTINATION .)
install(DIRECTORY examples DESTINATION .)
install(DIRECTORY docs/pages DESTINATION docs)

# The reference and the manual as HTML pages, made by pandoc.
find_program(QRL_PANDOC pandoc)
if(QRL_PANDOC)
  set(html_dir ${release_text_dir}/docs)
  add_custom_command(OUTPUT ${html_dir}/functions.html
    COMMAND ${CMAKE_COMMAND} -E make_directory ${html_dir}
    # The first heading becomes the page's title, the others one level up.
    COMMAND ${QRL_PANDOC} --from gfm --to html5 --standalone --toc --toc-depth 2
            --shift-heading-level-by -1 --output ${html_dir}/functions.html
            ${PROJECT_SOURCE_DIR}/docs/functions.md
    DEPENDS ${PROJECT_SOURCE_DIR}/docs/functions.md VERBATIM)
  add_custom_command(OUTPUT ${html_dir}/lantern.html
    COMMAND ${CMAKE_COMMAND} -E make_directory ${html_dir}
    COMMAND ${QRL_PANDOC} --from man --to html5 --standalone --toc
            --metadata title=lantern --output ${html_dir}/lantern.html
            ${PROJECT_SOURCE_DIR}/docs/lantern.1
    DEPENDS ${PROJECT_SOURCE_DIR}/docs/lantern.1 VERBATIM)
  add_custom_target(qrl_release_docs ALL DEPENDS ${html_dir}/functions.html ${html_dir}/lantern.html)
  install(FILES ${html_dir}/functions.html ${html_dir}/lantern.html DESTINATION docs)
else()
  message(STATUS "No pandoc: the release zip goes without the HTML reference and manual (scripts/setup installs pandoc)")
endif()

set(CPACK_PACKAGE_NAME qrlantern)
set(CPACK_PACKAGE_VENDOR "qrLantern")
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(release_width x86)
else()
  set(release_width x64)
endif()
set(CPACK_PACKAGE_FILE_NAME qrlantern-${PROJECT_VERSION}-windows-${release_width})
set(CPACK_GENERATOR ZIP)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
include(CPack)
