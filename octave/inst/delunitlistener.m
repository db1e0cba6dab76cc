## removed = delunitlistener (number)
## Unsubscribes the listener that addunitlistener numbered so; false when no
## listener has that number (any more).

function removed = delunitlistener (number)
  if (nargin != 1)
    print_usage ();
  endif
  removed = __twzo_units__ ("unsubscribe", number);
endfunction
