# Turns a configuration text into the array that default_config.h declares, a piece a line:
#   cmake -DINPUT=text.cfg -DOUTPUT=array.cpp -P EmbedText.cmake
cmake_minimum_required(VERSION 3.20)
file(READ "${INPUT}" text)
file(READ "${INPUT}" bytes HEX)
string(REGEX REPLACE "(..)" "\\1;" bytes "${bytes}")
if("00" IN_LIST bytes) # there the array's piece would end
  message(FATAL_ERROR "${INPUT} holds a NUL byte, which a default text cannot")
endif()
string(REPLACE "\\" "\\\\" text "${text}")
string(REPLACE "\"" "\\\"" text "${text}")
string(REPLACE "?" "\\?" text "${text}") # no trigraphs
string(REPLACE "\r" "\\r" text "${text}")
string(REPLACE "\n" "\\n\",\n    \"" text "${text}")
file(WRITE "${OUTPUT}.new" "\
#include \"dalvo/configuration/default_config.h\"

const char *dalvo_default_config[] = {
    \"${text}\",
    nullptr,
};
")
file(RENAME "${OUTPUT}.new" "${OUTPUT}")
