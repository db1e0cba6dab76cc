classdef UnitPrefix < twzo_units.HostObject
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
    name        # Unit prefix name
    exponent    # Prefix exponent
    builtin     # True if a unit prefix is a builtin unit prefix (setting it has no effect).
  endproperties

  properties (Dependent, Hidden)
    multiplier  # Prefix multiplier
  endproperties

  methods
    function obj = UnitPrefix(varargin)
      obj = obj@twzo_units.HostObject ("UnitPrefix", varargin{:});
    endfunction

    function varargout = register(obj, varargin)
      ## p.register ()
      ## Registers the prefix with the prefix registry; the registry's checks apply.
      varargout = __twzo_units__ ("invoke", "register", nargout, obj, varargin{:});
    endfunction

    function varargout = compare(obj, varargin)
      ## tf = p.compare (other)
      ## True when other is of the same class and every property of the two has
      ## the same value.
      varargout = __twzo_units__ ("invoke", "compare", nargout, obj, varargin{:});
    endfunction

    function varargout = delete(obj, varargin)
      ## p.delete ()
      ## Unregisters the prefix by its name and deletes its host object; every
      ## variable that holds it then holds a deleted object.
      varargout = __twzo_units__ ("invoke", "delete", nargout, obj, varargin{:});
    endfunction

    function disp(obj)
      ## disp (prefixes)
      ## Shows the prefixes in the module's own table, one line each (the module's
      ## display method); display (prefixes) shows the same after the variable's name.
      if (all (isvalid (obj)))
        __twzo_units__ ("invoke", "display", 0, obj);
      else
        disp@twzo_units.HostObject (obj);
      endif
    endfunction

    function value = get.name(obj)
      value = __twzo_units__ ("get", obj, "name");
    endfunction
    function obj = set.name(obj, value)
      __twzo_units__ ("set", obj, "name", value);
    endfunction

    function value = get.exponent(obj)
      value = __twzo_units__ ("get", obj, "exponent");
    endfunction
    function obj = set.exponent(obj, value)
      __twzo_units__ ("set", obj, "exponent", value);
    endfunction

    function value = get.builtin(obj)
      value = __twzo_units__ ("get", obj, "builtin");
    endfunction
    function obj = set.builtin(obj, value)
      __twzo_units__ ("set", obj, "builtin", value);
    endfunction

    function value = get.multiplier(obj)
      value = __twzo_units__ ("get", obj, "multiplier");
    endfunction
    function obj = set.multiplier(obj, value)
      __twzo_units__ ("set", obj, "multiplier", value);
    endfunction
  endmethods
endclassdef
