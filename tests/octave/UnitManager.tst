## The UnitManager class: each method's signatures, defaults and results in Octave.

%!test
%! um = UnitManager;
%! assert (__twzo_units__ ("valid", UnitManager) && isequal (um.getpqtypes (), um.showphysicalquantities ()));
%! all_units = um.showunits (true);
%! assert (numel (all_units), 27 + 28 - 1 + numel (um.showunits (false)));  # no "dimensionless"
%! assert ({numel(um.showprefixes(true)), um.showprefixes(false)}, {13, []});
%! assert (um.showprefixes ("kilo", "nonesuch", "milli")(2).exponent, -3);

%!test
%! um = UnitManager;
%! p = um.registerprefix ("tw_myria", 4);
%! assert ({p.name, p.exponent, um.calculateconversion("tw_myriameter", "meter", 1)}, {"tw_myria", 4, 1e4});
%! assert ({um.verifyunitprefix("tw_myria", 4), um.verifyunitprefix("tw_dimi", -4)}, {true, false});
%! q = UnitPrefix; q.name = "tw_hebdo"; q.exponent = 7;
%! assert (um.registerprefix (q).compare (q));
%! assert (um.registerprefix ("tw_near", 2 + 1e-15).exponent, 2);  # within tolerance of 2
%! um.unregisterunitprefix ("tw_myria"); um.unregisterunitprefix ("tw_hebdo"); um.unregisterunitprefix ("tw_near");
%! assert (um.showprefixes (false), []);

%!test
%! um = UnitManager;
%! rankine = um.registerunit ("tw_rankine", "kelvin", 5 / 9, 0);
%! assert (um.calculateconversion ("tw_rankine", "kelvin", 9), 5, 1e-12);
%! warm = um.registerunit ("tw_warm", "kelvin", 1, 300);
%! assert (um.calculateconversion ("tw_warm", "kelvin", 1), 301);
%! assert ({um.verifyunit("tw_warm", "kelvin", 1, 300), um.verifyunit("tw_cold", "kelvin", 1)}, {true, false});
%! u = Unit; u.name = "tw_league"; u.composition = "mile"; u.conversionfactor = 3;
%! assert (um.registerunit (u).compare (u));
%! assert (um.calculateconversion ("tw_league", "mile", 2), 6);
%! assert (sort ({um.showunits(false).name}), {"tw_league", "tw_rankine", "tw_warm"});
%! cellfun (@(name) um.unregisterunit (name), {"tw_rankine", "tw_warm", "tw_league"});
%! assert (um.showunits (false), []);

%!test
%! um = UnitManager;
%! um.registerphysicalquantity ("tw_snap", "length/time^4");
%! um.registerphysicalquantity ("tw_crackle", [0 0 1 -5 0 0 0]);
%! created = um.CreatedQuantities;
%! assert ({numel(created), created(1).name, created(1).Time, created(2).Time}, {2, "tw_snap", -4, -5});
%! [found, snap] = um.getphysqtyforcomposition ("meter/second^4");
%! assert ({found, snap.name, snap.Length}, {true, "", 1});
%! um.unregisterpq ("tw_snap");
%! assert (um.CreatedQuantities.name, "tw_crackle");
%! um.unregisterpq ("tw_crackle");
%! assert (um.CreatedQuantities, []);
%! um.verifycomposition ("kilogram*meter/second^2");
