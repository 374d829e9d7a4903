# Turns preset files into two arrays, their names and their texts:
#   cmake "-DINPUTS=a.cfg;b.cfg" -DOUTPUT=arrays.cpp -P EmbedPresets.cmake
cmake_minimum_required(VERSION 3.20)
set(names "")
set(texts "")
foreach(input IN LISTS INPUTS)
  get_filename_component(name "${input}" NAME_WE)
  file(READ "${input}" text)
  string(REPLACE "\\" "\\\\" text "${text}")
  string(REPLACE "\"" "\\\"" text "${text}")
  string(REPLACE "?" "\\?" text "${text}") # no trigraphs
  string(REPLACE "\n" "\\n\"\n    \"" text "${text}")
  string(APPEND names "    \"${name}\",\n")
  string(APPEND texts "    \"${text}\",\n")
endforeach()
file(WRITE "${OUTPUT}.new" "\
extern const char *const dalvo_preset_names[];
extern const char *const dalvo_preset_texts[];

const char *const dalvo_preset_names[] = {
${names}    nullptr,
};

const char *const dalvo_preset_texts[] = {
${texts}    nullptr,
};
")
file(RENAME "${OUTPUT}.new" "${OUTPUT}")
