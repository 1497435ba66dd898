# Compiler warnings shared by the library, its tests and its tools.
function(vq0300_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic)
  if(VQ0300_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
