# Runs zo_units once and compares what it printed, standard output and error merged,
# byte for byte with the expected transcript.
#
#   cmake -DSHELL=zo_units -DARGS=a|b|c [-DSTDIN=file] -DEXIT_CODE=0
#         -DEXPECTED=name.out -DACTUAL=name.actual -P RunTranscript.cmake
#
# ARGS separates the shell's arguments with '|', as ';' would split the test command.

string(REPLACE "|" ";" arguments "${ARGS}")
set(input)
if(STDIN)
  set(input INPUT_FILE "${STDIN}")
endif()
execute_process(
  COMMAND "${SHELL}" ${arguments}
  ${input}
  OUTPUT_VARIABLE printed
  ERROR_VARIABLE printed
  RESULT_VARIABLE status)
file(WRITE "${ACTUAL}" "${printed}")
file(READ "${EXPECTED}" expected)

if(NOT "${status}" STREQUAL "${EXIT_CODE}")
  message(FATAL_ERROR "zo_units ended with ${status}, not ${EXIT_CODE}; it printed:\n${printed}")
endif()
if(NOT "${printed}" STREQUAL "${expected}")
  execute_process(COMMAND diff -u "${EXPECTED}" "${ACTUAL}" OUTPUT_VARIABLE difference)
  message(FATAL_ERROR "The transcript differs from ${EXPECTED}:\n${difference}")
endif()
