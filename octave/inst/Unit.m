classdef Unit < twzo_units.HostObject
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
    name              # Unit name
    composition       # Composition of units.
    conversionfactor  # Multiplicative factor for conversion to base units.
    conversionoffset  # Additional offset for conversion to base units.
    builtin           # True if a unit is a builtin unit (setting it has no effect).
  endproperties

  methods
    function obj = Unit(varargin)
      obj = obj@twzo_units.HostObject ("Unit", varargin{:});
    endfunction

    function varargout = register(obj, varargin)
      ## u.register ()
      ## Registers the unit with the unit registry; the registry's checks apply.
      varargout = __twzo_units__ ("invoke", "register", nargout, obj, varargin{:});
    endfunction

    function varargout = compare(obj, varargin)
      ## tf = u.compare (other)
      ## True when other is of the same class and every property of the two has
      ## the same value.
      varargout = __twzo_units__ ("invoke", "compare", nargout, obj, varargin{:});
    endfunction

    function varargout = delete(obj, varargin)
      ## u.delete ()
      ## Unregisters the unit by its name and deletes its host object; every
      ## variable that holds it then holds a deleted object.
      varargout = __twzo_units__ ("invoke", "delete", nargout, obj, varargin{:});
    endfunction

    function disp(obj)
      ## disp (units)
      ## Shows the units in the module's own table, one line each (the module's
      ## display method); display (units) shows the same after the variable's name.
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

    function value = get.builtin(obj)
      value = __twzo_units__ ("get", obj, "builtin");
    endfunction
    function obj = set.builtin(obj, value)
      __twzo_units__ ("set", obj, "builtin", value);
    endfunction
  endmethods
endclassdef
