# Debian packages, built by CPack from the install components and split the
# way Debian splits a shared library:
#
#   libvq0300-1    Runtime      the versioned shared object and its soname link
#   libvq0300-dev  Development  headers, the unversioned link, the CMake package
#                               and vq0300.pc; depends on libvq0300-1 of its version
#   vq0300-tools   Tools        vq0300-errdef and its manual page
#
# plus a -dbgsym package (.ddeb) beside each package that holds machine code,
# with the debug information that CPack strips out of it. Dependencies on the
# system's libraries come from dpkg-shlibdeps, those between the three
# packages from the component graph below.
#
#   cmake --preset package && cmake --build --preset package && cpack --preset package

set(VQ0300_DEB_RELEASE 1)
set(VQ0300_DEB_MAINTAINER "libvq0300 maintainers <maintainers@users.noreply.c-seed-faf9c4ee.example>")
set(VQ0300_DEB_RUNTIME "libvq0300-${PROJECT_VERSION_MAJOR}")  # named after the soname
set(VQ0300_DEB_COMPONENTS Runtime Development)
set(VQ0300_DEB_PACKAGES ${VQ0300_DEB_RUNTIME} libvq0300-dev)
if(VQ0300_BUILD_TOOLS)
  list(APPEND VQ0300_DEB_COMPONENTS Tools)
  list(APPEND VQ0300_DEB_PACKAGES vq0300-tools)
endif()

# Each package carries its own copyright file and Debian changelog in
# /usr/share/doc/PACKAGE/. They belong to the packages only: a plain
# `cmake --install` leaves them out (EXCLUDE_FROM_ALL).
configure_file("${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in"
  "${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.Debian" @ONLY)
set(_changelog "${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.Debian.gz")
add_custom_command(OUTPUT "${_changelog}"
  COMMAND gzip -9nkf "${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.Debian"
  DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.Debian"
  COMMENT "Compressing the Debian changelog"
  VERBATIM)
add_custom_target(vq0300-debian-changelog ALL DEPENDS "${_changelog}")
foreach(component package IN ZIP_LISTS VQ0300_DEB_COMPONENTS VQ0300_DEB_PACKAGES)
  install(FILES "${CMAKE_CURRENT_LIST_DIR}/debian/copyright" "${_changelog}"
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package}
    COMPONENT ${component}
    EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vq0300)
set(CPACK_PACKAGE_VENDOR "libvq0300 maintainers")
set(CPACK_PACKAGE_CONTACT "${VQ0300_DEB_MAINTAINER}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
# Each package's description below starts with its own synopsis line; an
# empty summary keeps CPack from putting the project's in front of it.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL ${VQ0300_DEB_COMPONENTS})
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS Runtime)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${VQ0300_DEB_RELEASE})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${VQ0300_DEB_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)  # libvq0300-1 (= version-release)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# dpkg-shlibdeps must find libvq0300.so.1 for the tool; it is in the build tree.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}")
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
# The shlibs file of libvq0300-1: programs built against 1.0.0 need at least it.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# Descriptions: the synopsis, then the extended text; CPack indents each line
# and turns an empty one into " .".
set(_about [=[
libvq0300 gives tool writers an object list with a stack and a tree,
strings and string routines, numbered error messages loaded from a
definition file, a log file and a message channel, byte buffers, three
CRCs, the MT19937 random number generator and hexadecimal conversions.
]=])

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${VQ0300_DEB_RUNTIME})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
  "general-purpose C++ utility library\n${_about}\nThis package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvq0300-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DEBUGINFO_PACKAGE OFF)  # no machine code of its own
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "general-purpose C++ utility library - development files\n${_about}
This package holds the headers, the CMake package and the pkg-config file.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME vq0300-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
  "checker for libvq0300 error definition files
vq0300-errdef loads an error definition file as a program built on
libvq0300 does, lists the messages it loaded and warns about every
statement that the loader accepts but a person probably did not mean.")

# Packages only from a build for /usr; what CPack writes is then brought in
# line with Debian's policy.
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_LIST_DIR}/debian/CheckPrefix.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/debian/RepairPackages.cmake")

include(CPack)
