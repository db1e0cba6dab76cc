## The PhysicalQuantity class: exponents as properties, register through the toolbox.

%!test
%! q = PhysicalQuantity;
%! q.Mass = 2;
%! exponents = cellfun (@(name) q.(name), {"Amount", "Mass", "Length", "Time", "Temp", "Current", "LuminousIntensity"});
%! assert ({q.name, exponents}, {"", [0 2 0 0 0 0 0]});
%! q.Mass = int32 (0); q.Length = 1; q.Time = -3; q.name = "tw_jerk";
%! q.register ();
%! um = UnitManager;
%! [found, jerk] = um.getphysqtyforcomposition ("meter/second^3");
%! assert ({found, jerk.Length, jerk.Time, um.getpqtypes(){end}}, {true, 1, -3, "tw_jerk"});
%! um.unregisterpq ("tw_jerk");
%!error id=Unit:QuantityDuplicateName q = PhysicalQuantity; q.name = "length"; q.Length = 9; q.register ()
