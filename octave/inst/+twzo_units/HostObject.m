classdef HostObject
  ## twzo_units.HostObject  What the five classes of the units module share in
  ## Octave: each object holds one reference to a host object of the module, which
  ## Octave gives back when the last copy of the object goes (clear, reassignment,
  ## the end of a function).  Copies of a variable name the same host object, as
  ## handles do: a property set through one copy shows through every other.
  ##
  ## Every property access and method call goes to the module through
  ## __twzo_units__; errors and warnings keep the module's identifiers.

  properties (Hidden, SetAccess = protected)
    Host_ = [];  # the HostObjectValue that holds the host object's reference
  end

  methods
    function obj = HostObject(className, varargin)
      if (nargin > 0)
        obj.Host_ = __twzo_units__ ("construct", className, varargin{:});
      endif
    endfunction

    function valid = isvalid(obj)
      ## tf = isvalid (obj)
      ## True for each object whose host object has not been deleted.
      valid = false(size(obj));
      for k = 1:numel(obj)
        valid(k) = __twzo_units__ ("valid", obj(k));
      endfor
    endfunction

    function value = get(obj, name)
      ## get (obj)
      ## s = get (obj)
      ## value = get (obj, name)
      ## Shows the object's visible properties, one per line, or gives them as a
      ## struct, or gives the value of one property.
      if (nargin == 2)
        value = obj.(name);
      elseif (nargout == 0)
        printf ("%s", property_lines (obj));
      else
        value = struct ();
        for name = visible_properties (obj)
          value.(name{1}) = obj.(name{1});
        endfor
      endif
    endfunction

    function obj = set(obj, varargin)
      ## set (obj, name, value, ...)
      ## Sets properties of the object by name, in order.
      if (mod (numel (varargin), 2) != 0)
        error ("CALVEX:invalidArgument", "set: expected pairs of a property name and a value");
      endif
      for k = 1:2:numel (varargin)
        obj.(varargin{k}) = varargin{k + 1};
      endfor
    endfunction

    function display(obj)
      name = inputname (1);
      if (isempty (name))
        name = "ans";
      endif
      printf ("%s =\n", name);
      disp (obj);
    endfunction

    function disp(obj)
      if (! isscalar (obj))
        printf ("  %s %s array\n", size_text (obj), class (obj));
      elseif (! isvalid (obj))
        printf ("  handle to a deleted %s object\n", class (obj));
      elseif (isempty (visible_properties (obj)))
        printf ("  %s with no visible properties\n", class (obj));
      else
        printf ("  %s with properties:\n%s", class (obj), property_lines (obj));
      endif
    endfunction
  endmethods

  methods (Hidden)
    ## Octave joins objects of a class only through these.
    function joined = horzcat(varargin)
      joined = varargin{1};
      for k = 2:numel (varargin)
        for element = 1:numel (varargin{k})
          joined(1, end + 1) = varargin{k}(element);
        endfor
      endfor
    endfunction

    function joined = vertcat(varargin)
      joined = varargin{1};
      for k = 2:numel (varargin)
        for element = 1:numel (varargin{k})
          joined(end + 1, 1) = varargin{k}(element);
        endfor
      endfor
    endfunction
  endmethods
endclassdef

## The names of the visible properties, in the module's order, from its description.
function names = visible_properties (obj)
  described = strsplit (__twzo_units__ ("describe", class (obj)), "\n");
  listed = described(find (strcmp (described, "Properties:")) + 1:end);
  names = regexp (listed(! cellfun (@isempty, listed)), '^  (\w+) ', "tokens", "once");
  names = [names{:}];
endfunction

## One line for each visible property, "    name: value", the names aligned.
function text = property_lines (obj)
  names = visible_properties (obj);
  width = max (cellfun (@numel, names));
  text = "";
  for k = 1:numel (names)
    text = [text sprintf("    %*s: %s\n", width, names{k}, value_text (obj.(names{k})))];
  endfor
endfunction

function text = value_text (value)
  if (ischar (value) && rows (value) <= 1)
    text = ["'" value "'"];
  elseif (islogical (value) && isscalar (value))
    text = merge (value, "true", "false");
  elseif (isnumeric (value) && isscalar (value))
    text = num2str (value, 15);
  else
    text = sprintf ("[%s %s]", size_text (value), class (value));
  endif
endfunction

function text = size_text (value)
  text = strjoin (arrayfun (@num2str, size (value), "uniformoutput", false), "x");
endfunction
