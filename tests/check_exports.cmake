cmake_policy(SET CMP0057 NEW)
# Fails when the units library exports a symbol that is neither a module entry point nor
# a name that its installed headers declare in TwUnits: a class of the binding (a host
# class, its methods' and properties' classes) or any other internal must stay inside.
# Run with -DLIBRARY=<path to libtwzo_units.so> -DSOURCE_DIR=<the project's sources>.
execute_process(COMMAND nm -D --defined-only -C ${LIBRARY} OUTPUT_VARIABLE symbols RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "nm failed on ${LIBRARY}")
endif()

# What the installed headers declare (cmake/Install.cmake installs these), comments left out.
file(GLOB public_headers ${SOURCE_DIR}/units/*.hpp ${SOURCE_DIR}/units/messages/*.hpp)
list(APPEND public_headers ${SOURCE_DIR}/units/udd/UnitsModule.hpp)
set(declared operator)
foreach(header IN LISTS public_headers)
  file(READ ${header} text)
  string(REGEX REPLACE "//[^\n]*" "" text "${text}")
  string(REGEX MATCHALL "(class|struct|enum|namespace) +[A-Za-z_][A-Za-z0-9_]*" types "${text}")
  string(REGEX MATCHALL "[A-Za-z_][A-Za-z0-9_]*[ \n]*\\(" functions "${text}")
  foreach(name IN LISTS types functions)
    string(REGEX REPLACE "^(class|struct|enum|namespace) +|[ \n]*\\($" "" name "${name}")
    list(APPEND declared ${name})
  endforeach()
endforeach()

set(entry_points CVInitialize_zo_units QueryCVFcnTable_zo_units GetUnitApplication libtwzo_units_version
                 libtwzo_units_build_date)
string(REPLACE "\n" ";" lines "${symbols}")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^[0-9a-f]+ [A-Za-z] " "" name "${line}")
  string(REGEX REPLACE "^(vtable|typeinfo|typeinfo name|VTT|construction vtable|guard variable|non-virtual thunk|virtual thunk) (for|to) " "" name "${name}")
  if(name STREQUAL "" OR name IN_LIST entry_points)
    continue()
  endif()
  if(NOT name MATCHES "^TwUnits::([A-Za-z_][A-Za-z0-9_]*)")
    message(FATAL_ERROR "unexpected exported symbol: ${name}")
  endif()
  if(NOT CMAKE_MATCH_1 IN_LIST declared)
    message(FATAL_ERROR "exported, but no installed header declares it: ${name}")
  endif()
endforeach()
