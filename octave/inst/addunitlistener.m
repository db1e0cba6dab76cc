## number = addunitlistener (listener)
## Subscribes a function handle to the units module's change events.  Every unit,
## prefix and physical quantity that is created or removed calls
##
##   listener (name, type)
##
## with its name and one of the event types UNIT_CREATED, UNIT_REMOVED,
## PREFIX_CREATED, PREFIX_REMOVED, QUANTITY_CREATED, QUANTITY_REMOVED (and the
## module's other types as it posts them).  The events of a call reach the listeners
## in order once the call has returned, so a listener may use the module itself; an
## error in a listener ends the delivery of that call's events and reaches the
## caller.  The returned number unsubscribes it: delunitlistener (number).
##
##   n = addunitlistener (@(name, type) printf ("%s %s\n", type, name));
##   um = UnitManager; um.registerunit ('furlong', 'meter', 201.168);   % UNIT_CREATED furlong
##   delunitlistener (n);

function number = addunitlistener (listener)
  if (nargin != 1)
    print_usage ();
  endif
  number = __twzo_units__ ("subscribe", listener);
endfunction
