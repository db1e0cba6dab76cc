# Our own targets build warning-free with these; TW_WERROR makes a warning an error. The
# library, the host, the shell and the front-ends are clean of the conversion and cast
# warnings as well; the tests, which index with ints freely, are not held to them.
function(tw_set_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
  get_target_property(directory ${target} SOURCE_DIR)
  if(NOT directory MATCHES "^${PROJECT_SOURCE_DIR}/tests(/|$)")
    target_compile_options(${target} PRIVATE -Wconversion -Wsign-conversion -Wold-style-cast
                                             -Woverloaded-virtual)
  endif()
  if(TW_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
