classdef UnitSystem < twzo_units.HostObject
  ## UnitSystem  A unit system of the units module: a name and one unit for each
  ## of the seven base dimensions.  The object is a form: fill in every unit, then
  ## register copies it into the unit-system registry (later changes to the object
  ## do not reach the registered system).
  ##
  ##   s = UnitSystem;
  ##   s.Name = 'imperial'; s.MassUnit = 'pound'; s.AmountUnit = 'mole';
  ##   s.LengthUnit = 'foot'; s.TimeUnit = 'second'; s.TempUnit = 'kelvin';
  ##   s.CurrentUnit = 'ampere'; s.LuminousIntensityUnit = 'candela';
  ##   s.register
  ##
  ## As the module declares it:
  ##
  ## Class UnitSystem
  ## Methods:
  ##   register(handle)
  ##   unregister(handle, string)
  ## Properties:
  ##   Name (string, read/write): Unit System Name.
  ##   MassUnit (string, read/write): Mass units for unit system.
  ##   AmountUnit (string, read/write): Amount units for unit system.
  ##   LengthUnit (string, read/write): Length units for unit system.
  ##   TimeUnit (string, read/write): Time units for unit system.
  ##   TempUnit (string, read/write): Temperature units for unit system.
  ##   CurrentUnit (string, read/write): Current units for unit system.
  ##   LuminousIntensityUnit (string, read/write): Luminous intensity units for unit system.

  properties (Dependent)
    Name                   # Unit System Name.
    MassUnit               # Mass units for unit system.
    AmountUnit             # Amount units for unit system.
    LengthUnit             # Length units for unit system.
    TimeUnit               # Time units for unit system.
    TempUnit               # Temperature units for unit system.
    CurrentUnit            # Current units for unit system.
    LuminousIntensityUnit  # Luminous intensity units for unit system.
  endproperties

  methods
    function obj = UnitSystem(varargin)
      obj = obj@twzo_units.HostObject ("UnitSystem", varargin{:});
    endfunction

    function varargout = register(obj, varargin)
      ## s.register ()
      ## Registers a copy of the unit system; every unit must be set (mass is
      ## checked first, then amount, length, time, temperature, current, luminous
      ## intensity).
      varargout = __twzo_units__ ("invoke", "register", nargout, obj, varargin{:});
    endfunction

    function varargout = unregister(obj, varargin)
      ## s.unregister (name)
      ## Removes the registered unit system of that name (the argument, not the
      ## object's Name).
      varargout = __twzo_units__ ("invoke", "unregister", nargout, obj, varargin{:});
    endfunction

    function value = get.Name(obj)
      value = __twzo_units__ ("get", obj, "Name");
    endfunction
    function obj = set.Name(obj, value)
      __twzo_units__ ("set", obj, "Name", value);
    endfunction

    function value = get.MassUnit(obj)
      value = __twzo_units__ ("get", obj, "MassUnit");
    endfunction
    function obj = set.MassUnit(obj, value)
      __twzo_units__ ("set", obj, "MassUnit", value);
    endfunction

    function value = get.AmountUnit(obj)
      value = __twzo_units__ ("get", obj, "AmountUnit");
    endfunction
    function obj = set.AmountUnit(obj, value)
      __twzo_units__ ("set", obj, "AmountUnit", value);
    endfunction

    function value = get.LengthUnit(obj)
      value = __twzo_units__ ("get", obj, "LengthUnit");
    endfunction
    function obj = set.LengthUnit(obj, value)
      __twzo_units__ ("set", obj, "LengthUnit", value);
    endfunction

    function value = get.TimeUnit(obj)
      value = __twzo_units__ ("get", obj, "TimeUnit");
    endfunction
    function obj = set.TimeUnit(obj, value)
      __twzo_units__ ("set", obj, "TimeUnit", value);
    endfunction

    function value = get.TempUnit(obj)
      value = __twzo_units__ ("get", obj, "TempUnit");
    endfunction
    function obj = set.TempUnit(obj, value)
      __twzo_units__ ("set", obj, "TempUnit", value);
    endfunction

    function value = get.CurrentUnit(obj)
      value = __twzo_units__ ("get", obj, "CurrentUnit");
    endfunction
    function obj = set.CurrentUnit(obj, value)
      __twzo_units__ ("set", obj, "CurrentUnit", value);
    endfunction

    function value = get.LuminousIntensityUnit(obj)
      value = __twzo_units__ ("get", obj, "LuminousIntensityUnit");
    endfunction
    function obj = set.LuminousIntensityUnit(obj, value)
      __twzo_units__ ("set", obj, "LuminousIntensityUnit", value);
    endfunction
  endmethods
endclassdef
