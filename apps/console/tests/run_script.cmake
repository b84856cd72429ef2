# Runs oxdm-console on a script over a fresh sample and checks how it ended.
#   cmake -DPROGRAM=... -DSCRIPT=... -DDATA=... -DEXIT=0|1
#         [-DMATCH=regex;regex...] [-DNO_MATCH=regex;...] [-DFILES=path;...]
#         -P run_script.cmake
# EXIT is the exit status wanted; every MATCH must appear in the output, no
# NO_MATCH may, and every file of FILES must exist afterwards.
execute_process(
  COMMAND ${PROGRAM} --data ${DATA} --fresh --script ${SCRIPT}
  RESULT_VARIABLE status
  OUTPUT_VARIABLE output
  ERROR_VARIABLE output)
set(problems "")
if(NOT status STREQUAL EXIT)
  string(APPEND problems "exit status ${status}, wanted ${EXIT}\n")
endif()
foreach(pattern IN LISTS MATCH)
  if(NOT output MATCHES "${pattern}")
    string(APPEND problems "missing from the output: ${pattern}\n")
  endif()
endforeach()
foreach(pattern IN LISTS NO_MATCH)
  if(output MATCHES "${pattern}")
    string(APPEND problems "in the output but unwanted: ${pattern}\n")
  endif()
endforeach()
foreach(file IN LISTS FILES)
  if(NOT EXISTS "${file}")
    string(APPEND problems "not written: ${file}\n")
  endif()
endforeach()
if(problems)
  message(FATAL_ERROR "${SCRIPT}:\n${problems}--- output ---\n${output}")
endif()
