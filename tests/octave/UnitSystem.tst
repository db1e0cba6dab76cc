## The UnitSystem class: a form copied into the registry by register.

%!test
%! s = UnitSystem;
%! names = {"MassUnit", "AmountUnit", "LengthUnit", "TimeUnit", "TempUnit", "CurrentUnit", "LuminousIntensityUnit"};
%! assert (cellfun (@(name) s.(name), ["Name" names], "uniformoutput", false), repmat ({""}, 1, 8));
%! values = {"pound", "mole", "foot", "second", "kelvin", "ampere", "candela"};
%! s.Name = "tw_imperial";
%! for k = 1:7
%!   s.(names{k}) = values{k};
%! endfor
%! s.register ();
%! s.MassUnit = "ounce";  # the registered copy keeps its own
%! s.Name = "tw_other";
%! s.register ();
%! s.unregister ("tw_imperial");
%! s.unregister ("tw_other");
%!error id=Unit:SystemNotRegistered s = UnitSystem; s.unregister ("tw_imperial")
