classdef UnitManager < twzo_units.HostObject
  ## UnitManager  The door to the registries of the units module: lists units,
  ## prefixes and physical quantities; verifies, registers and removes them;
  ## parses compositions; converts values between units.  There is one manager:
  ## every UnitManager is the same object.
  ##
  ##   um = UnitManager;
  ##   um.calculateconversion ('mile', 'meter', 1)          % 1609.344
  ##   furlong = um.registerunit ('furlong', 'meter', 201.168);
  ##   um.calculateconversion ('mile', 'furlong', 1)        % 8
  ##   [names, exponents] = um.parsecomposition ('mole/liter')
  ##
  ## As the module declares it:
  ##
  ## Class UnitManager
  ## Methods:
  ##   getpqtypes(handle) -> string vector
  ##   showunits(handle, bool) -> handle vector
  ##   showunits(handle, string, ...) -> handle vector
  ##   showprefixes(handle, bool) -> handle vector
  ##   showprefixes(handle, string, ...) -> handle vector
  ##   showphysicalquantities(handle) -> string vector
  ##   showphysicalquantities(handle) -> string vector, string vector
  ##   showphysicalquantities(handle) -> string vector, string vector, CALVEX array
  ##   registerprefix(handle, string, double) -> handle
  ##   registerprefix(handle, handle) -> handle
  ##   registerunit(handle, string, string, double) -> handle
  ##   registerunit(handle, string, string, double, double) -> handle
  ##   registerunit(handle, handle) -> handle
  ##   unregisterunit(handle, string)
  ##   registerphysicalquantity(handle, string, string)
  ##   registerphysicalquantity(handle, string, CALVEX array)
  ##   unregisterunitprefix(handle, string)
  ##   unregisterpq(handle, string)
  ##   calculateconversion(handle, string, string, double) -> double
  ##   verifyunit(handle, string, string, double) -> bool
  ##   verifyunit(handle, string, string, double, double) -> bool
  ##   verifyunitprefix(handle, string, double) -> bool
  ##   verifycomposition(handle, string)
  ##   parsecomposition(handle, string) -> CALVEX array, int vector
  ##   getphysqtyforcomposition(handle, string) -> bool, handle
  ## Properties:

  properties (Dependent, Hidden)
    CreatedQuantities  # All the physical quantities created during a CALVEX session.
  endproperties

  methods
    function obj = UnitManager(varargin)
      obj = obj@twzo_units.HostObject ("UnitManager", varargin{:});
    endfunction

    function varargout = getpqtypes(obj, varargin)
      ## names = um.getpqtypes ()
      ## The names of all registered physical quantities, as a cell array.
      varargout = __twzo_units__ ("invoke", "getpqtypes", nargout, obj, varargin{:});
    endfunction

    function varargout = showunits(obj, varargin)
      ## units = um.showunits (includeBuiltin)
      ## units = um.showunits (name, ...)
      ## The registered units (user-defined ones only unless includeBuiltin is true),
      ## or those of the given names that exist, in argument order.
      varargout = __twzo_units__ ("invoke", "showunits", nargout, obj, varargin{:});
    endfunction

    function varargout = showprefixes(obj, varargin)
      ## prefixes = um.showprefixes (includeBuiltin)
      ## prefixes = um.showprefixes (name, ...)
      ## The registered prefixes, as showunits gives units.
      varargout = __twzo_units__ ("invoke", "showprefixes", nargout, obj, varargin{:});
    endfunction

    function varargout = showphysicalquantities(obj, varargin)
      ## [names, makeups, builtin] = um.showphysicalquantities ()
      ## The names of all registered quantities, their make-up over the base
      ## quantities ('length*time^-1'), and which of them are built in.
      varargout = __twzo_units__ ("invoke", "showphysicalquantities", nargout, obj, varargin{:});
    endfunction

    function varargout = registerprefix(obj, varargin)
      ## prefix = um.registerprefix (name, exponent)
      ## prefix = um.registerprefix (prefixObject)
      ## Registers a prefix of 10^exponent (an integer other than 0) and returns it.
      varargout = __twzo_units__ ("invoke", "registerprefix", nargout, obj, varargin{:});
    endfunction

    function varargout = registerunit(obj, varargin)
      ## unit = um.registerunit (name, composition, factor)
      ## unit = um.registerunit (name, composition, factor, offset)
      ## unit = um.registerunit (unitObject)
      ## Registers a unit and returns it; [] when the same definition is already
      ## registered.  A new definition of an existing name warns Unit:Redefining.
      varargout = __twzo_units__ ("invoke", "registerunit", nargout, obj, varargin{:});
    endfunction

    function varargout = unregisterunit(obj, varargin)
      ## um.unregisterunit (name)
      ## Removes a user-defined unit that nothing else uses.
      varargout = __twzo_units__ ("invoke", "unregisterunit", nargout, obj, varargin{:});
    endfunction

    function varargout = registerphysicalquantity(obj, varargin)
      ## um.registerphysicalquantity (name, composition)
      ## um.registerphysicalquantity (name, exponents)
      ## Registers a quantity from a composition of quantities ('length/time^2') or
      ## a 1x7 row of exponents (fractions are cut, with the warning
      ## Quantity:FractionalExponentsFixed).
      varargout = __twzo_units__ ("invoke", "registerphysicalquantity", nargout, obj, varargin{:});
    endfunction

    function varargout = unregisterunitprefix(obj, varargin)
      ## um.unregisterunitprefix (name)
      ## Removes a user-defined prefix that no unit uses.
      varargout = __twzo_units__ ("invoke", "unregisterunitprefix", nargout, obj, varargin{:});
    endfunction

    function varargout = unregisterpq(obj, varargin)
      ## um.unregisterpq (name)
      ## Removes a user-defined physical quantity.
      varargout = __twzo_units__ ("invoke", "unregisterpq", nargout, obj, varargin{:});
    endfunction

    function varargout = calculateconversion(obj, varargin)
      ## y = um.calculateconversion (from, to, x)
      ## Converts the value x from one unit or composition to another.
      varargout = __twzo_units__ ("invoke", "calculateconversion", nargout, obj, varargin{:});
    endfunction

    function varargout = verifyunit(obj, varargin)
      ## tf = um.verifyunit (name, composition, factor)
      ## tf = um.verifyunit (name, composition, factor, offset)
      ## True when exactly this definition is already registered; false when it may
      ## be registered; an error when it is invalid.
      varargout = __twzo_units__ ("invoke", "verifyunit", nargout, obj, varargin{:});
    endfunction

    function varargout = verifyunitprefix(obj, varargin)
      ## tf = um.verifyunitprefix (name, exponent)
      ## True when this prefix is already registered; false when it may be registered;
      ## an error when it is invalid.
      varargout = __twzo_units__ ("invoke", "verifyunitprefix", nargout, obj, varargin{:});
    endfunction

    function varargout = verifycomposition(obj, varargin)
      ## um.verifycomposition (composition)
      ## An error when the composition does not parse or names an unknown unit.
      varargout = __twzo_units__ ("invoke", "verifycomposition", nargout, obj, varargin{:});
    endfunction

    function varargout = parsecomposition(obj, varargin)
      ## [names, exponents] = um.parsecomposition (composition)
      ## The unit names of the composition, one per row of a char matrix, and their
      ## net exponents, in the same order.
      varargout = __twzo_units__ ("invoke", "parsecomposition", nargout, obj, varargin{:});
    endfunction

    function varargout = getphysqtyforcomposition(obj, varargin)
      ## [found, quantity] = um.getphysqtyforcomposition (composition)
      ## Whether a registered physical quantity has the dimensions of the
      ## composition, and a PhysicalQuantity with those dimensions.
      varargout = __twzo_units__ ("invoke", "getphysqtyforcomposition", nargout, obj, varargin{:});
    endfunction

    function value = get.CreatedQuantities(obj)
      value = __twzo_units__ ("get", obj, "CreatedQuantities");
    endfunction
    function obj = set.CreatedQuantities(obj, value)
      __twzo_units__ ("set", obj, "CreatedQuantities", value);
    endfunction
  endmethods
endclassdef
