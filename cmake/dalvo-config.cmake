# find_package(dalvo CONFIG) defines dalvo::configuration and dalvo::defaults. Which libraries they are is chosen by
# COMPONENTS shared or COMPONENTS static; without either, the shared one where it is installed.
set(dalvo_kinds ${dalvo_FIND_COMPONENTS})
if(NOT dalvo_kinds)
  set(dalvo_kinds static)
  if(EXISTS "${CMAKE_CURRENT_LIST_DIR}/dalvo-shared-targets.cmake")
    set(dalvo_kinds shared)
  endif()
endif()
list(LENGTH dalvo_kinds dalvo_kind_count)

if(NOT dalvo_kind_count EQUAL 1 OR NOT dalvo_kinds MATCHES "^(shared|static)$")
  set(dalvo_FOUND FALSE)
  set(dalvo_NOT_FOUND_MESSAGE "dalvo has the components shared and static, of which one is asked for")
elseif(NOT EXISTS "${CMAKE_CURRENT_LIST_DIR}/dalvo-${dalvo_kinds}-targets.cmake")
  set(dalvo_FOUND FALSE)
  set(dalvo_NOT_FOUND_MESSAGE "dalvo is installed here without its ${dalvo_kinds} library")
elseif(NOT TARGET dalvo::configuration) # else an earlier call has chosen
  include("${CMAKE_CURRENT_LIST_DIR}/dalvo-${dalvo_kinds}-targets.cmake")
endif()
unset(dalvo_kinds)
unset(dalvo_kind_count)
