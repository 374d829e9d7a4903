# Included by the hosts behind what the README shows: a second program that brings its own two symbols, and the tests.
add_executable(own_symbols own_symbols.cpp)
target_link_libraries(own_symbols PRIVATE dalvo::configuration)

enable_testing()
add_test(NAME solver COMMAND solver "${BUILT_IN_SEED}")
add_test(NAME own_symbols COMMAND own_symbols)
