# Our own targets build warning-free with these, warnings as errors.
function(tw_set_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)
endfunction()
