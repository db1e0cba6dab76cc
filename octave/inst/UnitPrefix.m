classdef UnitPrefix < twzo_units.RegistryEntry
  ## UnitPrefix  One unit prefix of the units module: a name and a power of ten
  ## (exponent), from -51 to 51 but not 0.  The manager's registerprefix and
  ## showprefixes give the registry's own prefixes; UnitPrefix with no arguments
  ## makes a new one, which register hands to the registry.
  ##
  ##   p = UnitPrefix;
  ##   p.name = 'myria'; p.exponent = 4;
  ##   p.register
  ##   um = UnitManager; um.calculateconversion ('myriameter', 'meter', 3)   % 30000
  ##
  ## As the module declares it:
  ##
  ## Class UnitPrefix
  ## Methods:
  ##   register(handle)
  ##   compare(handle, handle) -> bool
  ##   display(handle)
  ##   display(handle vector)
  ##   delete(handle)
  ## Properties:
  ##   name (string, read/write): Unit prefix name
  ##   exponent (double, read/write): Prefix exponent
  ##   builtin (bool, read-only): True if a unit prefix is a builtin unit prefix.

  properties (Dependent)
    exponent    # Prefix exponent
  endproperties

  properties (Dependent, Hidden)
    multiplier  # Prefix multiplier
  endproperties

  methods
    function obj = UnitPrefix(varargin)
      obj = obj@twzo_units.RegistryEntry ("UnitPrefix", varargin{:});
    endfunction

    function value = get.exponent(obj)
      value = __twzo_units__ ("get", obj, "exponent");
    endfunction
    function obj = set.exponent(obj, value)
      __twzo_units__ ("set", obj, "exponent", value);
    endfunction

    function value = get.multiplier(obj)
      value = __twzo_units__ ("get", obj, "multiplier");
    endfunction
    function obj = set.multiplier(obj, value)
      __twzo_units__ ("set", obj, "multiplier", value);
    endfunction
  endmethods
endclassdef
