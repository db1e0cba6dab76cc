## snapshot = registry_snapshot ()
## What the registries hold, as the classes list it: every unit with its definition,
## every prefix with its exponent, every physical quantity with its make-up.  Two
## snapshots are equal exactly when nothing was registered, changed or removed in
## between.

function snapshot = registry_snapshot ()
  um = UnitManager;
  units = um.showunits (true);
  prefixes = um.showprefixes (true);
  snapshot.units = cell (1, numel (units));
  for k = 1:numel (units)
    u = units(k);
    snapshot.units{k} = sprintf ("%s = %.17g %s + %.17g", u.name, u.conversionfactor,
                                 u.composition, u.conversionoffset);
  endfor
  snapshot.prefixes = cell (1, numel (prefixes));
  for k = 1:numel (prefixes)
    snapshot.prefixes{k} = sprintf ("%s = 10^%d", prefixes(k).name, prefixes(k).exponent);
  endfor
  [names, makeups] = um.showphysicalquantities ();
  snapshot.quantities = strcat (names, " = ", makeups);
endfunction
