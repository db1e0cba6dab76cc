## The Unit class: defaults, register, compare, delete.

%!test
%! u = Unit;
%! assert (get (u), struct ("name", "", "composition", "", "conversionfactor", 1,
%!                         "conversionoffset", 0, "builtin", false));
%! u.name = "tw_fortnight"; u.composition = "day"; u.conversionfactor = 14;
%! u.builtin = true;  # read-only: ignored
%! assert (u.builtin, false);
%! u.register ();
%! assert (UnitManager ().calculateconversion ("tw_fortnight", "hour", 1), 336);
%! copy = Unit; copy.name = "tw_fortnight"; copy.composition = "day"; copy.conversionfactor = 14;
%! assert ({u.compare(copy), u.compare(UnitPrefix), UnitManager().showunits("meter").builtin}, {true, false, true});
%! copy.conversionoffset = 1;
%! assert (compare (u, copy), false);
%! delete (u);
%! assert ({isvalid(u), isvalid(copy)}, {false, true});
%! assert (UnitManager ().showunits ("tw_fortnight"), []);
%!error id=CALVEX:InvalidObject u = Unit; u.name = "tw_gone"; u.composition = "meter"; u.register; u.delete (); u.name

%!test
%! u = Unit; u.name = [];
%! assert (u.name, "");
