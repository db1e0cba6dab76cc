## The border between Octave and the module: values both ways, refused input, the
## lifetime of host objects, change events, and the classes' declarations.

## Values cross in both directions in the host's forms.
%!test
%! um = UnitManager;
%! assert (um.calculateconversion ("mile", "meter", int32 (2)), 2 * um.calculateconversion ("mile", "meter", 1));
%! assert (um.calculateconversion ("mile", "meter", single (1)), um.calculateconversion ("mile", "meter", 1));
%! assert (um.calculateconversion ("kilometer", "meter", [Inf; -Inf; NaN](2)), -Inf);
%! assert (isnan (um.calculateconversion ("mile", "meter", NaN)));
%! [names, exponents] = um.parsecomposition ("kilogram*meter^2/second^3");
%! assert (names, ["kilogram"; "meter   "; "second  "]);
%! assert (exponents, [1 2 -3]);
%! [found, speed] = um.getphysqtyforcomposition ("meter/second");
%! assert ({found, class(speed), speed.Length, speed.Time}, {true, "PhysicalQuantity", 1, -1});
%! [quantities, makeups, builtin] = um.showphysicalquantities ();
%! assert ({class(quantities), quantities{1}, class(builtin), builtin(1)}, {"cell", "amount", "logical", true});
%! assert (numel (makeups), numel (quantities));
%! both = um.showunits ("meter", "nonesuch", "second");
%! assert ({class(both), size(both), both(1).name, both(2).name}, {"Unit", [1 2], "meter", "second"});
%! assert (um.showunits ("nonesuch"), []);
%! assert (um.registerunit ("kilometer", "meter", 1000), []);

## Copies name the same host object; objects join and index as arrays.
%!test
%! u = Unit;
%! v = u;
%! v.name = "tw_shared";
%! assert (u.name, "tw_shared");
%! set (u, "composition", "meter", "conversionfactor", 3);
%! assert (get (v), struct ("name", "tw_shared", "composition", "meter", "conversionfactor", 3,
%!                         "conversionoffset", 0, "builtin", false));
%! both = [u v];
%! assert ({size(both), both(2).conversionfactor, size([u; v])}, {[1 2], 3, [2 1]});
%! assert (u.compare (v) && compare (both(1), both(2)));
%! assert (UnitManager ().calculateconversion ("meter", "meter", 5), 5);

## Input that the host has no form of is refused at the border, before the module
## sees it; what it can pass the host refuses as the shell's would.
%!test
%! um = UnitManager;
%! invalid = @(what) sprintf ("A value of class '%s' cannot be passed to the units module.", what);
%! cases = {
%!   "um.calculateconversion ('mile', 'meter', 1 + 2i)", "CALVEX:invalidArgument", "Complex numbers cannot be passed to the units module."
%!   "um.calculateconversion ('mile', 'meter', struct ('x', 1))", "CALVEX:invalidArgument", invalid("struct")
%!   "um.calculateconversion (@sin, 'meter', 1)", "CALVEX:invalidArgument", invalid("function_handle")
%!   "um.registerphysicalquantity ('tw_q', zeros (1, 7, 2))", "CALVEX:invalidArgument", "A double array of more than two dimensions cannot be passed to the units module."
%!   "um.registerunit (['tw_a' char(0) 'b'], 'meter', 1)", "CALVEX:invalidArgument", "A text holding a NUL character cannot be passed to the units module."
%!   "um.registerunit ({'tw_a'}, 'meter', 1)", "CALVEX:NoMatchingSignature", "No method 'registerunit' with matching signature found for class 'UnitManager'."
%!   "um.registerunit ('tw_a', {1, 2}, 1)", "CALVEX:NoMatchingSignature", "No method 'registerunit' with matching signature found for class 'UnitManager'."
%!   "um.registerunit ('tw_a', 'meter', [])", "CALVEX:NoMatchingSignature", "No method 'registerunit' with matching signature found for class 'UnitManager'."
%!   "um.registerunit ('tw_a', 'meter', [1 2])", "CALVEX:NoMatchingSignature", "No method 'registerunit' with matching signature found for class 'UnitManager'."
%!   "um.registerunit ('tw_a', 'meter', true)", "CALVEX:NoMatchingSignature", "No method 'registerunit' with matching signature found for class 'UnitManager'."
%!   "um.registerunit (['tw_a'; 'tw_b'], 'meter', 1)", "CALVEX:NoMatchingSignature", "No method 'registerunit' with matching signature found for class 'UnitManager'."
%!   "um.showunits (1)", "CALVEX:NoMatchingSignature", "No method 'showunits' with matching signature found for class 'UnitManager'."
%!   "um.registerunit ([], 'meter', 1)", "Unit:NameInvalid", "Invalid unit name. Type 'help zophunit' for valid names."
%!   "um.registerunit ('', 'meter', 1)", "Unit:NameInvalid", "Invalid unit name. Type 'help zophunit' for valid names."
%!   "um.calculateconversion ('', 'meter', 1)", "Unit:BadUnitCompositionParse", "An error occurred parsing the unit composition."
%!   "um.registerprefix ('tw_p', NaN)", "CALVEX:badArgument", "The exponent must be a finite number."
%!   "um.registerprefix ('tw_p', Inf)", "CALVEX:badArgument", "The exponent must be a finite number."
%!   "um.registerunit ('tw_a', 'meter', Inf)", "CALVEX:badArgument", "The multiplier must be a finite number."
%!   "q = PhysicalQuantity; q.Mass = NaN", "CALVEX:expectedInteger", "Expected an integer value, got nan."
%!   "q = PhysicalQuantity; q.Mass = 2.5", "CALVEX:expectedInteger", "Expected an integer value, got 2.5."
%!   "q = PhysicalQuantity; q.Mass = 'heavy'", "CALVEX:badPropertyValue", "The 'Mass' property of the 'PhysicalQuantity' class takes a value of type 'int32', not a char array."
%!   "u = Unit; u.conversionfactor = {3}", "CALVEX:badPropertyValue", "The 'conversionfactor' property of the 'Unit' class takes a value of type 'double', not a cell array."
%!   "p = UnitPrefix; p.exponent = 1 + 1i", "CALVEX:invalidArgument", "Complex numbers cannot be passed to the units module."
%!   "u = Unit (1)", "CALVEX:TooManyInputs", "Too many input arguments."
%!   "um.registerunit (um, 'meter', 1)", "CALVEX:NoMatchingSignature", "No method 'registerunit' with matching signature found for class 'UnitManager'."
%!   "u = Unit; u.name = 'tw_gone'; u.composition = 'meter'; u.register; delete (u); u.name", "CALVEX:InvalidObject", "Invalid or deleted object."
%!   "u = Unit; u.name = 'tw_gone'; u.composition = 'meter'; u.register; v = u; delete (u); um.registerunit (v)", "CALVEX:InvalidObject", "Invalid or deleted object."
%! };
%! for k = 1:rows (cases)
%!   [code, identifier, message] = cases{k, :};
%!   before = registry_snapshot ();
%!   try
%!     eval ([code ";"]);
%!     error ("test:noError", "'%s' raised no error", code);
%!   catch err
%!     assert ({code, err.identifier, err.message}, {code, identifier, message});
%!   end_try_catch
%!   assert (registry_snapshot (), before, code);
%! endfor

## An Octave object's host reference goes back with the object's last copy: the
## module's count of live host objects returns to where it was.
%!test
%! um = UnitManager;
%! start = __twzo_units__ ("live");
%! for k = 1:200
%!   u = Unit;
%!   u.name = "tw_loop";
%!   copy = u;
%!   p = UnitPrefix;
%!   s = UnitSystem;
%!   q = PhysicalQuantity;
%!   [found, quantity] = um.getphysqtyforcomposition ("meter");
%!   units = um.showunits ("meter", "second");
%!   u = Unit;  # reassignment
%! endfor
%! assert (__twzo_units__ ("live") > start);
%! clear u copy p s q quantity units
%! assert (__twzo_units__ ("live"), start);
%! f = um.registerunit ("tw_cycle", "meter", 3);
%! clear f
%! um.unregisterunit ("tw_cycle");
%! assert (__twzo_units__ ("live"), start);

## Listeners hear the module's change events, in order, once the call is done.
%!function heard = heard_events (name, type)
%!  persistent events = {};
%!  if (nargin == 2)
%!    events(end + 1, :) = {type, name};
%!  else
%!    heard = events;
%!    events = {};
%!  endif
%!endfunction

%!test
%! um = UnitManager;
%! number = addunitlistener (@heard_events);
%! unwind_protect
%!   f = um.registerunit ("tw_furlong", "meter", 201.168);
%!   um.unregisterunit ("tw_furlong");
%!   p = um.registerprefix ("tw_myria", 4);
%!   um.unregisterunitprefix ("tw_myria");
%!   q = PhysicalQuantity; q.name = "tw_jerk"; q.Length = 1; q.Time = -3;
%!   q.register;
%!   um.unregisterpq ("tw_jerk");
%!   try
%!     um.unregisterunit ("nonesuch");
%!   end_try_catch
%!   assert (heard_events (), {"UNIT_CREATED", "tw_furlong"; "UNIT_REMOVED", "tw_furlong";
%!                       "PREFIX_CREATED", "tw_myria"; "PREFIX_REMOVED", "tw_myria";
%!                       "QUANTITY_CREATED", "tw_jerk"; "QUANTITY_REMOVED", "tw_jerk"});
%! unwind_protect_cleanup
%!   assert (delunitlistener (number));
%! end_unwind_protect
%! assert (delunitlistener (number), false);
%! f = um.registerunit ("tw_furlong", "meter", 201.168);
%! um.unregisterunit ("tw_furlong");
%! assert (heard_events (), {});

## A listener's error reaches the caller after the call has done its work.
%!test
%! um = UnitManager;
%! number = addunitlistener (@(name, type) error ("tw:listener", "heard %s", name));
%! unwind_protect
%!   try
%!     f = um.registerunit ("tw_furlong", "meter", 201.168);
%!   catch err
%!     assert ({err.identifier, err.message}, {"tw:listener", "heard tw_furlong"});
%!   end_try_catch
%!   assert (um.showunits ("tw_furlong").name, "tw_furlong");
%! unwind_protect_cleanup
%!   delunitlistener (number);
%!   um.unregisterunit ("tw_furlong");
%! end_unwind_protect
%!error <must be a function handle> addunitlistener (1)

## Each class has the module's methods and visible properties, and its help shows
## the module's own description of it.
%!test
%! joined = @(names) strjoin (sort (names(:))', ",");
%! for name = {"UnitManager", "Unit", "UnitPrefix", "UnitSystem", "PhysicalQuantity"}
%!   described = __twzo_units__ ("describe", name{1});
%!   lines = strsplit (strtrim (described), "\n");
%!   properties_at = find (strcmp (lines, "Properties:"));
%!   declared = regexp (lines(3:properties_at - 1), '^  (\w+)\(', "tokens", "once");
%!   visible = regexp (lines(properties_at + 1:end), '^  (\w+) ', "tokens", "once");
%!   assert (all (ismember ([declared{:}], methods (name{1}))), name{1});
%!   assert (joined (properties (name{1})), joined ([{} visible{:}]), name{1});
%!   assert (! isempty (strfind (get_help_text (name{1}), strrep (["\n" strtrim(described)], "\n", "\n "))), name{1});
%! endfor
