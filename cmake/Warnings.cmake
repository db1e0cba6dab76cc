# Our own targets build warning-free with these; TW_WERROR makes a warning an error.
function(tw_set_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
  if(TW_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
