# Installs the Octave package into a fresh prefix, or runs one test file against it.
#
#   cmake -DOCTAVE=octave-cli -DPREFIX=dir -DTARBALL=twzo_units-1.0.0.tar.gz -P RunOctave.cmake
#   cmake -DOCTAVE=octave-cli -DPREFIX=dir -DTEST_FILE=Unit.tst -P RunOctave.cmake
#
# Octave reads no start-up files and keeps no history, and pkg looks only at PREFIX.

set(packages "pkg local_list ${PREFIX}/octave_packages;")
if(TARBALL)
  file(REMOVE_RECURSE ${PREFIX})
  file(MAKE_DIRECTORY ${PREFIX})
  set(code "pkg prefix ${PREFIX} ${PREFIX}; ${packages} pkg install ${TARBALL}")
else()
  set(code "${packages} pkg load twzo_units; [passed, total] = test ('${TEST_FILE}', 'quiet', stdout);
            printf ('%d of %d tests passed\\n', passed, total); exit (passed != total || total == 0)")
endif()
execute_process(COMMAND ${OCTAVE} --quiet --no-history --norc --eval "${code}"
                INPUT_FILE /dev/null RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "Octave ended with ${status}")
endif()
