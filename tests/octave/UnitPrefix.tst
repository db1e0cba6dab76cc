## The UnitPrefix class: defaults, register, compare, delete.

%!test
%! p = UnitPrefix;
%! assert ({p.name, p.exponent, p.multiplier, p.builtin}, {"", 0, 1, false});
%! p.name = "tw_myria"; p.exponent = 4;
%! assert (p.multiplier, 1e4);
%! p.name = [];  # no name: unchanged
%! assert (p.name, "tw_myria");
%! p.register ();
%! assert (UnitManager ().calculateconversion ("tw_myriagram", "gram", 2), 2e4);
%! assert ({p.compare(UnitManager().showprefixes("tw_myria")), p.compare(Unit)}, {true, false});
%! kilo = UnitManager ().showprefixes ("kilo");
%! assert ({kilo.builtin, kilo.exponent}, {true, 3});
%! p.delete ();
%! assert (isvalid (p), false);
%! assert (UnitManager ().showprefixes ("tw_myria"), []);
