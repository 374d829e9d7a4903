# Included by the hosts after what the README shows: a second program that brings its own two symbols, a third that
# inspects, and the tests.
add_executable(own_symbols own_symbols.cpp)
target_link_libraries(own_symbols PRIVATE dalvo::configuration)
add_executable(inspecting inspecting.cpp)
target_link_libraries(inspecting PRIVATE dalvo::inspect dalvo::defaults)

enable_testing()
add_test(NAME solver COMMAND solver "${BUILT_IN_SEED}")
add_test(NAME own_symbols COMMAND own_symbols)
add_test(NAME inspecting COMMAND inspecting "${BUILT_IN_SEED}")
