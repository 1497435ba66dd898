# Read by cpack before it builds anything (CPACK_PROJECT_CONFIG_FILE): Debian
# packages install into /usr, so they come from a build folder configured for
# /usr, the one of the package preset.
if(NOT CPACK_PACKAGING_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR
    "Debian packages install into /usr, and this build folder is configured for "
    "${CPACK_PACKAGING_INSTALL_PREFIX}. Build them from the package preset:\n"
    "  cmake --preset package && cmake --build --preset package && cpack --preset package")
endif()
