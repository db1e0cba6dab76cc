# Installs the Octave package into a fresh prefix, or runs a test against it: the %!
# blocks of one test file, the replay of one shell transcript, or a script.
#
#   cmake -DOCTAVE=octave-cli -DPREFIX=dir -DTARBALL=twzo_units-1.0.0.tar.gz -P RunOctave.cmake
#   cmake -DOCTAVE=octave-cli -DPREFIX=dir -DTEST_FILE=Unit.tst -P RunOctave.cmake
#   cmake -DOCTAVE=octave-cli -DPREFIX=dir -DTRANSCRIPT=units.out -P RunOctave.cmake
#   cmake -DOCTAVE=octave-cli -DPREFIX=dir -DSCRIPT=demo_octave.m -P RunOctave.cmake
#
# Octave reads no start-up files and keeps no history, and pkg looks only at PREFIX: its
# lists of the user's and of everyone's packages are both there.

get_filename_component(here ${CMAKE_CURRENT_LIST_FILE} DIRECTORY)
set(lists "pkg local_list ${PREFIX}/octave_packages; pkg global_list ${PREFIX}/global_packages;")
set(load "${lists} pkg load twzo_units; addpath ${here};")
if(DEFINED TARBALL)
  file(REMOVE_RECURSE ${PREFIX})
  file(MAKE_DIRECTORY ${PREFIX})
  set(code "${lists} pkg prefix ${PREFIX} ${PREFIX}; pkg install -local ${TARBALL}")
elseif(DEFINED TEST_FILE)
  set(code "${load} [passed, total] = test ('${TEST_FILE}', 'quiet', stdout);
            printf ('%d of %d tests passed\\n', passed, total); exit (passed != total || total == 0)")
elseif(DEFINED TRANSCRIPT)
  set(code "${load} replay_transcript ('${TRANSCRIPT}')")
else()
  set(code "${load} run ${SCRIPT}")
endif()
execute_process(COMMAND ${OCTAVE} --quiet --no-history --norc --eval "${code}"
                INPUT_FILE /dev/null RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "Octave ended with ${status}")
endif()
