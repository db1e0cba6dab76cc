classdef RegistryEntry < twzo_units.HostObject
  ## twzo_units.RegistryEntry  What Unit and UnitPrefix share: the methods register,
  ## compare, display and delete, by which an object enters its registry, is compared
  ## property by property, shows in the module's own table, and leaves its registry;
  ## and the properties name and builtin.

  properties (Dependent)
    name     # The unit's or prefix's name
    builtin  # True for a built-in unit or prefix (setting it has no effect)
  endproperties

  methods
    function obj = RegistryEntry(varargin)
      obj = obj@twzo_units.HostObject (varargin{:});
    endfunction

    function varargout = register(obj, varargin)
      ## obj.register ()
      ## Registers the unit or prefix with its registry; the registry's checks apply.
      varargout = __twzo_units__ ("invoke", "register", nargout, obj, varargin{:});
    endfunction

    function varargout = compare(obj, varargin)
      ## tf = obj.compare (other)
      ## True when other is of the same class and every property of the two has
      ## the same value.
      varargout = __twzo_units__ ("invoke", "compare", nargout, obj, varargin{:});
    endfunction

    function varargout = delete(obj, varargin)
      ## obj.delete ()
      ## Unregisters the unit or prefix by its name and deletes its host object; every
      ## variable that holds it then holds a deleted object.
      varargout = __twzo_units__ ("invoke", "delete", nargout, obj, varargin{:});
    endfunction

    function disp(obj)
      ## disp (objects)
      ## Shows the units or prefixes in the module's own table, one line each (the
      ## module's display method); display (objects) shows the same after the
      ## variable's name.
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

    function value = get.builtin(obj)
      value = __twzo_units__ ("get", obj, "builtin");
    endfunction
    function obj = set.builtin(obj, value)
      __twzo_units__ ("set", obj, "builtin", value);
    endfunction
  endmethods
endclassdef
