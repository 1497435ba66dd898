# The hardening flags that Debian builds its packages with (dpkg-buildflags
# with hardening=+all), for every target of the tree: a stack protector in
# functions with arrays or address-taken locals, stack clash protection,
# control-flow protection, libc calls checked against the sizes the compiler
# knows, position-independent executables, and a relocation table that is
# resolved at start-up and then read-only (-z relro -z now).
#
# _FORTIFY_SOURCE needs optimisation: a Debug build goes without it, as glibc
# would otherwise warn at every file.
if(NOT VQ0300_HARDENING)
  return()
endif()

include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_compile_options(
  -fstack-protector-strong
  -fstack-clash-protection
  -fcf-protection
  -Wformat -Werror=format-security
  "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
add_link_options(-Wl,-z,relro -Wl,-z,now)
