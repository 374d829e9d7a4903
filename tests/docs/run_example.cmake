# Runs PROGRAM in FOLDER with the text INPUT, where there is one, as solver.cfg and compares what it prints, on both
# streams, with the file EXPECTED. Its status is 0, and 1 where it prints an error of the text.
cmake_minimum_required(VERSION 3.20)
file(REMOVE "${FOLDER}/solver.cfg")
if(EXISTS "${INPUT}")
  configure_file("${INPUT}" "${FOLDER}/solver.cfg" COPYONLY)
endif()
execute_process(COMMAND "${PROGRAM}" WORKING_DIRECTORY "${FOLDER}"
  OUTPUT_VARIABLE printed ERROR_VARIABLE printed RESULT_VARIABLE status)
file(READ "${EXPECTED}" expected)
set(expected_status 0)
if(expected MATCHES ": error: ") # a finding
  set(expected_status 1)
endif()
if(NOT status EQUAL expected_status OR NOT printed STREQUAL expected)
  message(FATAL_ERROR "status ${status}, printed:\n${printed}expected:\n${expected}")
endif()
