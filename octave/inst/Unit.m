classdef Unit < twzo_units.RegistryEntry
  ## Unit  One unit definition of the units module: its name, its composition of
  ## other units, and the factor and offset that convert it to that composition.
  ## The manager's registerunit and showunits give the registry's own units; Unit
  ## with no arguments makes a new one, which register hands to the registry.
  ##
  ##   u = Unit;
  ##   u.name = 'furlong'; u.composition = 'meter'; u.conversionfactor = 201.168;
  ##   u.register
  ##   um = UnitManager; um.calculateconversion ('mile', 'furlong', 1)   % 8
  ##
  ## As the module declares it:
  ##
  ## Class Unit
  ## Methods:
  ##   register(handle)
  ##   compare(handle, handle) -> bool
  ##   display(handle)
  ##   display(handle vector)
  ##   delete(handle)
  ## Properties:
  ##   name (string, read/write): Unit name
  ##   composition (string, read/write): Composition of units.
  ##   conversionfactor (double, read/write): Multiplicative factor for conversion to base units.
  ##   conversionoffset (double, read/write): Additional offset for conversion to base units.
  ##   builtin (bool, read-only): True if a unit is a builtin unit.

  properties (Dependent)
    composition       # Composition of units.
    conversionfactor  # Multiplicative factor for conversion to base units.
    conversionoffset  # Additional offset for conversion to base units.
  endproperties

  methods
    function obj = Unit(varargin)
      obj = obj@twzo_units.RegistryEntry ("Unit", varargin{:});
    endfunction

    function value = get.composition(obj)
      value = __twzo_units__ ("get", obj, "composition");
    endfunction
    function obj = set.composition(obj, value)
      __twzo_units__ ("set", obj, "composition", value);
    endfunction

    function value = get.conversionfactor(obj)
      value = __twzo_units__ ("get", obj, "conversionfactor");
    endfunction
    function obj = set.conversionfactor(obj, value)
      __twzo_units__ ("set", obj, "conversionfactor", value);
    endfunction

    function value = get.conversionoffset(obj)
      value = __twzo_units__ ("get", obj, "conversionoffset");
    endfunction
    function obj = set.conversionoffset(obj, value)
      __twzo_units__ ("set", obj, "conversionoffset", value);
    endfunction
  endmethods
endclassdef
