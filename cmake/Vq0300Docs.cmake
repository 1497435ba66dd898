# The API reference: Doxygen renders the comments of the public headers into
# HTML in <build>/docs/html (`cmake --build --preset default --target docs`).
# Every exported declaration must carry a comment: a declaration without one,
# like any other Doxygen warning, fails the target. The reference is not part
# of `all`; once built, `cmake --install` puts it into the documentation
# directory (CMAKE_INSTALL_DOCDIR, share/doc/vq0300 by default).

set(VQ0300_DOCS_OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/docs")
set(VQ0300_DOCS_MAINPAGE "${PROJECT_SOURCE_DIR}/docs/mainpage.md")
set(VQ0300_DOCS_INPUT "\"${VQ0300_DOCS_MAINPAGE}\"")
# vq0300_export.h holds only the export mark, which the reference leaves out.
foreach(header IN LISTS VQ0300_PUBLIC_HEADERS)
  if(header MATCHES "/vq0300_export\\.h$")
    continue()
  endif()
  string(APPEND VQ0300_DOCS_INPUT " \\\n  \"${header}\"")
endforeach()
configure_file("${PROJECT_SOURCE_DIR}/docs/Doxyfile.in" "${VQ0300_DOCS_OUTPUT}/Doxyfile" @ONLY)

find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  add_custom_target(docs
    # Pages of declarations that are gone must not linger in the reference.
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${VQ0300_DOCS_OUTPUT}/html"
    COMMAND Doxygen::doxygen "${VQ0300_DOCS_OUTPUT}/Doxyfile"
    WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
    COMMENT "Building the API reference in ${VQ0300_DOCS_OUTPUT}/html"
    VERBATIM)
else()
  add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -E echo "The API reference needs Doxygen: apt-get install doxygen"
    COMMAND ${CMAKE_COMMAND} -E false
    VERBATIM)
endif()

install(DIRECTORY "${VQ0300_DOCS_OUTPUT}/html"
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT Documentation
  OPTIONAL)
