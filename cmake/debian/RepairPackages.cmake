# Run by CPack after it has written the packages (CPACK_POST_BUILD_SCRIPTS):
# brings what CPack 3.25 writes in line with Debian's policy, which lintian
# checks, and rebuilds each package with dpkg-deb.
#
# - A library package refreshes the linker cache through the ldconfig trigger
#   ("activate-noawait ldconfig"), not through postinst/postrm scripts that
#   call ldconfig.
# - A -dbgsym package lists its files in md5sums by their path in the
#   package (CPack writes the path of its staging folder), its .debug files
#   are not executable, and its documentation folder is a link to that of the
#   package it belongs to, as debhelper makes it.

find_program(VQ0300_DPKG_DEB dpkg-deb REQUIRED)

function(vq0300_control_field control field out)
  file(STRINGS "${control}" _line REGEX "^${field}: ")
  string(REGEX REPLACE "^${field}: " "" _value "${_line}")
  set(${out} "${_value}" PARENT_SCOPE)
endfunction()

function(vq0300_write_md5sums root)
  file(GLOB_RECURSE _files LIST_DIRECTORIES false RELATIVE "${root}" "${root}/*")
  list(SORT _files)
  set(_sums "")
  foreach(_file IN LISTS _files)
    if(_file MATCHES "^DEBIAN/" OR IS_SYMLINK "${root}/${_file}")
      continue()
    endif()
    file(MD5 "${root}/${_file}" _md5)
    string(APPEND _sums "${_md5}  ${_file}\n")
  endforeach()
  file(WRITE "${root}/DEBIAN/md5sums" "${_sums}")
  file(CHMOD "${root}/DEBIAN/md5sums" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

foreach(package_file IN LISTS CPACK_PACKAGE_FILES)
  get_filename_component(_name "${package_file}" NAME)
  set(_root "${CPACK_TOPLEVEL_DIRECTORY}/repair/${_name}")
  file(REMOVE_RECURSE "${_root}")
  file(MAKE_DIRECTORY "${CPACK_TOPLEVEL_DIRECTORY}/repair")
  execute_process(COMMAND "${VQ0300_DPKG_DEB}" --raw-extract "${package_file}" "${_root}"
    COMMAND_ERROR_IS_FATAL ANY)
  vq0300_control_field("${_root}/DEBIAN/control" Package _package)

  if(EXISTS "${_root}/DEBIAN/postinst")
    file(READ "${_root}/DEBIAN/postinst" _postinst)
    if(_postinst MATCHES "ldconfig")
      file(REMOVE "${_root}/DEBIAN/postinst" "${_root}/DEBIAN/postrm")
      file(WRITE "${_root}/DEBIAN/triggers" "activate-noawait ldconfig\n")
      file(CHMOD "${_root}/DEBIAN/triggers" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    endif()
  endif()

  if(_package MATCHES "^(.+)-dbgsym$")
    set(_owner "${CMAKE_MATCH_1}")
    file(GLOB_RECURSE _debug_files "${_root}/usr/lib/debug/*.debug")
    foreach(_file IN LISTS _debug_files)
      file(CHMOD "${_file}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    endforeach()
    file(MAKE_DIRECTORY "${_root}/usr/share/doc")
    file(CREATE_LINK "${_owner}" "${_root}/usr/share/doc/${_package}" SYMBOLIC)
  endif()

  vq0300_write_md5sums("${_root}")
  execute_process(COMMAND "${VQ0300_DPKG_DEB}" --root-owner-group --build "${_root}" "${package_file}"
    OUTPUT_QUIET
    COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${_root}")
endforeach()
