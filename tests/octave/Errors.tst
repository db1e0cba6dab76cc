## Every error and warning that the five classes can raise reaches Octave with the
## module's identifier and exact message; a refused call leaves the registries as they
## were.

%!function check_refusals (cases, setup)
%!  eval (setup);
%!  for k = 1:rows (cases)
%!    [code, identifier, message] = cases{k, :};
%!    before = registry_snapshot ();
%!    try
%!      eval ([code ";"]);
%!      error ("test:noError", "'%s' raised no error", code);
%!    catch err
%!      assert ({code, err.identifier, err.message}, {code, identifier, message});
%!    end_try_catch
%!    assert (registry_snapshot (), before, code);
%!  endfor
%!endfunction

%!test
%! setup = ["um = UnitManager; f = um.registerunit ('tw_furlong', 'meter', 201.168);" ...
%!          "fph = um.registerunit ('tw_fph', 'tw_furlong/hour', 1);" ...
%!          "free = um.registerunit ('tw_chain', 'meter', 20.1168);" ...
%!          "r = um.registerunit ('tw_rank', 'kelvin', 1, 5);" ...
%!          "um.getphysqtyforcomposition ('celsius/second');"];  # names the quantity at first sight
%! nf = @(name) sprintf ("Referenced unit '%s' does not exist.", name);
%! cases = {
%!   "um.calculateconversion ('furlongs', 'meter', 1)", "Unit:NotFound", nf("furlongs")
%!   "um.unregisterunit ('meter')", "Unit:CannotUnregisterBuiltin", "A built-in unit cannot be redefined or unregistered."
%!   "um.unregisterunit ('tw_furlong')", "Unit:BeingUsed", "Cannot unregister unit because it is being used by unit 'tw_fph'."
%!   "f.conversionfactor = 2", "Unit:BeingUsed", "Cannot unregister unit because it is being used by unit 'tw_fph'."
%!   "free.conversionfactor = 3", "Unit:RegisteredUnitCannotChange", "A registered unit cannot have its name, composition, multiplier or offset changed."
%!   "um.registerunit ('tw_chain', 'second', 1)", "Unit:DuplicateName", "Unable to register user-defined unit 'tw_chain' because a unit with that name already exists. Use ZOPHREMOVEFROMLIBRARY to remove the unit."
%!   "um.calculateconversion ('meter', 'meter*', 1)", "Unit:BadUnitCompositionParse", "An error occurred parsing the unit composition."
%!   "[n, e] = um.parsecomposition ('meter/(second')", "Units:InternalParseError", "An error occurred parsing the unit composition."
%!   "um.verifycomposition ('meter*2')", "Unit:InvalidCompositionMathMult", "Unit compositions cannot contain numeric multiplication."
%!   "um.verifycomposition ('meter/2')", "Unit:InvalidCompositionMathDiv", "Unit compositions cannot contain numeric division."
%!   "um.verifycomposition ('meter^0.5')", "Unit:IntegersOnlyInComposition", "A unit exponent must be an integer value."
%!   "um.verifycomposition ('meter^second')", "Unit:CompositionExponentMustBeInteger", "A unit exponent must be an integer value."
%!   "um.verifycomposition ('meter+second')", "Unit:InvalidMathInUnitComposition", "Invalid operator in unit composition. Valid operators are '*', '/' and '^'."
%!   "um.registerunit ('tw_num', '5', 1)", "Unit:UnitCompositionNumeric", "A unit composition cannot be a numeric value. A valid composition can be any existing unit or any combination of existing units and prefixes. For example, mole, micromole, mole/second^2."
%!   "um.registerunit ('tw_furlong', 'tw_furlong^2/tw_furlong', 1)", "Unit:SelfReferenceInComposition", "Unable to register unit. A unit's composition cannot reference itself."
%!   "um.registerunit ('2bad', 'meter', 1)", "Unit:NameInvalid", "Invalid unit name. Type 'help zophunit' for valid names."
%!   "um.verifyunit ('kilofoo', 'meter', 1000)", "Unit:NameClashesWithPrefix", "Unable to register unit 'kilofoo'. The name of the unit begins with the same name as a registered prefix 'kilo'."
%!   "um.registerunit ('kilofoo', 'meter', 1)", "Unit:NameClashesWithPrefix2", "Unable to register unit 'kilofoo'. Registering this unit would cause a redefinition of the reserved prefix 'kilo'."
%!   "um.registerunit ('tw_offm', 'meter', 1, 5)", "Unit:OffsetUnitsTemperatureOnly", "Only temperature units can have an offset."
%!   "um.registerunit ('tw_zero', 'meter', 0)", "Unit:ConversionFunctionZero", "The multiplier for a unit cannot be zero."
%!   "um.calculateconversion ('meter', 'second', 1)", "Unit:ConversionDifferentQuants", "Unable to convert between units. Units are not of the same physical quantity."
%!   "um.calculateconversion ('celsius/second', 'kelvin/second', 1)", "Unit:ConversionMixedOffset", "Unable to convert between units. Units with more than one physical quantity where one of the physical quantities has an offset cannot be converted."
%!   "um.calculateconversion ('kilotw_rank', 'kelvin', 1)", "Unit:OffsetConversionWithPrefixNotAllowed", "Unable to convert between units. A unit with a prefix and an offset cannot be converted."
%!   "um.registerphysicalquantity ('length', [0 0 5 0 0 0 0])", "Unit:QuantityDuplicateName", "Unable to register physical quantity 'length' because a physical quantity with that name already exists."
%!   "um.registerphysicalquantity ('tw_speed', [0 0 1 -1 0 0 0])", "Unit:QuantityDuplicateDimensions", "Unable to register physical quantity 'tw_speed' because physical quantity 'velocity' has matching dimensions."
%!   "um.registerphysicalquantity ('tw_q', [0 0 1])", "Unit:BadQuantArgs", "The composition used to register a physical quantity must be a vector of size 1x7."
%!   "um.registerphysicalquantity ('tw_q', [0 0 1 0 0 0 0]')", "Unit:BadQuantArgs", "The composition used to register a physical quantity must be a vector of size 1x7."
%!   "um.unregisterpq ('nonesuch')", "Unit:QuantityNotFound", "Referenced physical quantity 'nonesuch' does not exist."
%!   "um.unregisterpq ('length')", "Unit:CannotUnregisterBuiltinQuantity", "Removal of built-in physical quantities is not allowed."
%!   "um.registerphysicalquantity ('tw_q', 'length/')", "Unit:BadQuantityParse", "An error occurred parsing the physical quantities composition."
%!   "um.registerphysicalquantity ('tw_q', 'length^0.5')", "Unit:IntegersOnlyInQuantity", "Non-Integer powers are not currently supported for physical quantity compositions."
%!   "um.registerphysicalquantity ('2x', 'length^7')", "Unit:QuantityNameInvalid", "Error registering physical quantity. See help for valid names."
%!   "um.registerphysicalquantity ('tw_q', 'length+time')", "Unit:InvalidMathInQuantity", "Invalid operator found in unit composition. Valid operators in a physical quantity include '*', '/' and '^'."
%! };
%! check_refusals (cases, setup);
%! um = UnitManager;
%! um.unregisterunit ('tw_fph'); um.unregisterunit ('tw_furlong'); um.unregisterunit ('tw_chain'); um.unregisterunit ('tw_rank');

%!test
%! setup = ["um = UnitManager; hebdo = um.registerprefix ('tw_hebdo', 7);" ...
%!          "hf = um.registerunit ('tw_hfoot', 'tw_hebdometer', 1);" ...
%!          "s = UnitSystem; s.Name = 'MKS'; t = UnitSystem;"];
%! for unit = {"Mass", "gram"; "Amount", "mole"; "Length", "meter"; "Time", "second"; "Temp", "kelvin"; "Current", "ampere"; "LuminousIntensity", "candela"}'
%!   setup = [setup sprintf('s.%sUnit = ''%s'';', unit{:})];
%! endfor
%! notset = @(what, this) sprintf ('The %s in %s UnitSystem must be set before registering the UnitSystem.', what, this);
%! cases = {
%!   "um.unregisterunitprefix ('nonesuch')", "Unit:PrefixNotFound", "Referenced prefix 'nonesuch' does not exist."
%!   "um.unregisterunitprefix ('')", "Unit:PrefixNotFound", "Referenced prefix '' does not exist."
%!   "um.unregisterunitprefix ('kilo')", "Unit:PrefixCannotUnregisterBuiltin", "Redefining or removing built-in prefixes is not allowed."
%!   "um.registerprefix ('kilo', 4)", "Unit:PrefixCannotUnregisterBuiltin", "Redefining or removing built-in prefixes is not allowed."
%!   "um.unregisterunitprefix ('tw_hebdo')", "Unit:PrefixBeingUsed", "Cannot unregister unit prefix because it is being used in the definition of unit 'tw_hfoot'."
%!   "hebdo.exponent = 5", "Unit:RegisteredPrefixCannotChange", "A registered prefix cannot have its name or exponent changed."
%!   "p = UnitPrefix; p.exponent = 2; p.register", "Unit:PrefixUnsetName", "Unable to register user prefix because its name is not set."
%!   "um.registerprefix ('2x', 2)", "Unit:PrefixNameInvalid", "Invalid unit prefix name. Type 'help zophunitprefix' for valid names."
%!   "um.registerprefix ('tw_hebdo', 5)", "Unit:PrefixDuplicateName", "Unable to register prefix 'tw_hebdo' because a prefix with that name already exists."
%!   "um.registerprefix ('mil', 2)", "Unit:PrefixUnitNameCollision", "Unable to register prefix 'mil' because the registered unit 'mile' begins with the same name."
%!   "um.verifyunitprefix ('tw_x', 2.5)", "Unit:PrefixMustBeMultTen", "A prefix exponent must be an integer."
%!   "um.registerprefix ('tw_x', 2.5)", "Unit:UnitPrefixMustBeMultTen", "A prefix exponent must be an integer."
%!   "um.registerprefix ('tw_x', 0)", "Unit:PrefixZeroMultNotAllowed", "A prefix exponent cannot be 0."
%!   "um.registerprefix ('tw_x', 60)", "Units:PrefixExponentTooLarge", "Exponent too large for unit prefix. The maximum allowable exponent on this platform is 51."
%!   "um.registerprefix ('tw_x', -60)", "Units:PrefixExponentTooSmall", "Exponent too small for unit prefix. The minimum allowable exponent on this platform is -51."
%!   "s.register", "Unit:SystemDuplicateName", "Unable to register UnitSystem 'MKS' because it already exists. Try removing the other instance with 'unregisterunitsystem' first or renaming this instance."
%!   "s.Name = '2bad'; s.register", "Unit:SystemNameInvalid", "Error registering unit system. See help for valid names."
%!   "s.unregister ('nonesuch')", "Unit:SystemNotRegistered", "Cannot unregister UnitSystem because it is not registered."
%!   "t.register", "Unit:SystemMassTypeNotSet", notset("mass", "the")
%!   "t.MassUnit = 'gram'; t.register", "Unit:SystemAmountTypeNotSet", notset("amount", "this")
%!   "t.AmountUnit = 'mole'; t.register", "Unit:SystemLengthTypeNotSet", notset("length", "this")
%!   "t.LengthUnit = 'meter'; t.register", "Unit:SystemTimeTypeNotSet", notset("time", "this")
%!   "t.TimeUnit = 'second'; t.register", "Unit:SystemTemperatureTypeNotSet", notset("temperature", "this")
%!   "t.TempUnit = 'kelvin'; t.register", "Unit:SystemCurrentTypeNotSet", notset('"current"', 'this')
%!   "t.CurrentUnit = 'ampere'; t.register", "Unit:SystemLuminousIntensityTypeNotSet", notset('"luminous intensity"', 'this')
%! };
%! check_refusals (cases, setup);
%! um = UnitManager;
%! um.unregisterunit ('tw_hfoot'); um.unregisterunitprefix ('tw_hebdo');

## 100 unit names are allowed in a composition, not 101.
%!test
%! setup = "um = UnitManager; names = arrayfun (@(k) sprintf ('tw_u%d', k), 1:101, 'uniformoutput', false);";
%! eval (setup);
%! for k = 1:101
%!   um.registerunit (names{k}, "meter", 2);
%! endfor
%! unwind_protect
%!   assert (rows (um.parsecomposition (strjoin (names(1:100), "*"))), 100);
%!   check_refusals ({"x = um.parsecomposition (strjoin (names, '*'))", "Unit:CompositionLimit", "Compositions are limited to 100 parts."}, setup);
%! unwind_protect_cleanup
%!   for k = 1:101
%!     um.unregisterunit (names{k});
%!   endfor
%! end_unwind_protect

## Warnings keep their identifiers: warning ('off', ID) silences exactly that one,
## lastwarn reports it, and warning ('error', ID) makes it an error once the call is done.
%!test
%! um = UnitManager;
%! f = um.registerunit ("tw_rod", "meter", 5.0292);
%! cases = {
%!   "um.verifyunit ('tw_rod', 'meter', 5)", "Unit:Redefining", "Warning: A unit with the name 'tw_rod' already exists.\n It will be re-registered with the new definition."
%!   "um.calculateconversion ('celsius', 'kelvin', 20)", "Unit:Deprecation", "The temperature unit 'celsius' has been removed. Use kelvin instead."
%!   "um.registerphysicalquantity ('tw_pop', [0 0 1 -6.5 0 0 0]); um.unregisterpq ('tw_pop')", "Quantity:FractionalExponentsFixed", "Fractional exponents on physical quantities are not supported. Value will be fixed."
%! };
%! state = warning ();
%! unwind_protect
%!   for k = 1:rows (cases)
%!     [code, identifier, message] = cases{k, :};
%!     warning ("on", identifier);
%!     lastwarn ("");
%!     printed = evalc ([code ";"]);
%!     [text, id] = lastwarn ();
%!     assert ({id, text, printed}, {identifier, message, ["warning: " message "\n"]});
%!     warning ("off", identifier);
%!     lastwarn ("");
%!     assert (evalc ([code ";"]), "");
%!     assert (lastwarn (), "");
%!   endfor
%!   warning ("on", "Unit:Redefining");
%!   warning ("off", "Unit:Deprecation");
%!   assert (evalc ("um.calculateconversion ('celsius', 'kelvin', 20);"), "");
%!   assert (evalc ("um.registerunit ('tw_rod', 'meter', 4);"), ["warning: " cases{1, 3} "\n"]);
%!   warning ("error", "Unit:Deprecation");
%!   check_refusals (cases(2, :), "um = UnitManager;");
%! unwind_protect_cleanup
%!   warning (state);
%!   um.unregisterunit ("tw_rod");
%! end_unwind_protect
