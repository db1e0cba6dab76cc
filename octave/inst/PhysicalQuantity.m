classdef PhysicalQuantity < twzo_units.HostObject
  ## PhysicalQuantity  A physical quantity of the units module: a name and seven
  ## integer exponents over the base dimensions (amount, mass, length, time,
  ## temperature, current, luminous intensity).  register hands it to the toolbox's
  ## zophregisterquantity, which registers it.
  ##
  ##   q = PhysicalQuantity;
  ##   q.name = 'jerk'; q.Length = 1; q.Time = -3;
  ##   q.register
  ##
  ## As the module declares it:
  ##
  ## Class PhysicalQuantity
  ## Methods:
  ##   register(handle)
  ## Properties:
  ##   name (string, read/write): Quantity name
  ##   Amount (int32, read/write): The amount composition.
  ##   Mass (int32, read/write): The mass composition.
  ##   Length (int32, read/write): The length composition.
  ##   Time (int32, read/write): The time composition.
  ##   Temp (int32, read/write): The temp composition.
  ##   Current (int32, read/write): The current composition.
  ##   LuminousIntensity (int32, read/write): The luminous intensity composition.

  properties (Dependent)
    name               # Quantity name
    Amount             # The amount composition.
    Mass               # The mass composition.
    Length             # The length composition.
    Time               # The time composition.
    Temp               # The temp composition.
    Current            # The current composition.
    LuminousIntensity  # The luminous intensity composition.
  endproperties

  methods
    function obj = PhysicalQuantity(varargin)
      obj = obj@twzo_units.HostObject ("PhysicalQuantity", varargin{:});
    endfunction

    function varargout = register(obj, varargin)
      ## q.register ()
      ## Registers the quantity through zophregisterquantity with its name and
      ## exponents; the quantity registry's checks apply.
      varargout = __twzo_units__ ("invoke", "register", nargout, obj, varargin{:});
    endfunction

    function value = get.name(obj)
      value = __twzo_units__ ("get", obj, "name");
    endfunction
    function obj = set.name(obj, value)
      __twzo_units__ ("set", obj, "name", value);
    endfunction

    function value = get.Amount(obj)
      value = __twzo_units__ ("get", obj, "Amount");
    endfunction
    function obj = set.Amount(obj, value)
      __twzo_units__ ("set", obj, "Amount", value);
    endfunction

    function value = get.Mass(obj)
      value = __twzo_units__ ("get", obj, "Mass");
    endfunction
    function obj = set.Mass(obj, value)
      __twzo_units__ ("set", obj, "Mass", value);
    endfunction

    function value = get.Length(obj)
      value = __twzo_units__ ("get", obj, "Length");
    endfunction
    function obj = set.Length(obj, value)
      __twzo_units__ ("set", obj, "Length", value);
    endfunction

    function value = get.Time(obj)
      value = __twzo_units__ ("get", obj, "Time");
    endfunction
    function obj = set.Time(obj, value)
      __twzo_units__ ("set", obj, "Time", value);
    endfunction

    function value = get.Temp(obj)
      value = __twzo_units__ ("get", obj, "Temp");
    endfunction
    function obj = set.Temp(obj, value)
      __twzo_units__ ("set", obj, "Temp", value);
    endfunction

    function value = get.Current(obj)
      value = __twzo_units__ ("get", obj, "Current");
    endfunction
    function obj = set.Current(obj, value)
      __twzo_units__ ("set", obj, "Current", value);
    endfunction

    function value = get.LuminousIntensity(obj)
      value = __twzo_units__ ("get", obj, "LuminousIntensity");
    endfunction
    function obj = set.LuminousIntensity(obj, value)
      __twzo_units__ ("set", obj, "LuminousIntensity", value);
    endfunction
  endmethods
endclassdef
