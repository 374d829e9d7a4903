# Runs PROGRAM in FOLDER with the text INPUT, where there is one, as solver.cfg and compares what it prints with the file
# EXPECTED.
cmake_minimum_required(VERSION 3.20)
file(REMOVE "${FOLDER}/solver.cfg")
if(EXISTS "${INPUT}")
  configure_file("${INPUT}" "${FOLDER}/solver.cfg" COPYONLY)
endif()
execute_process(COMMAND "${PROGRAM}" WORKING_DIRECTORY "${FOLDER}" OUTPUT_VARIABLE printed RESULT_VARIABLE status)
file(READ "${EXPECTED}" expected)
if(NOT status EQUAL 0 OR NOT printed STREQUAL expected)
  message(FATAL_ERROR "status ${status}, printed:\n${printed}expected:\n${expected}")
endif()
