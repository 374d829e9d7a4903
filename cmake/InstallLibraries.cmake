# Installs what a host builds against: the public headers, the libraries, the CMake package, the files of pkg-config and
# the documents.
# Nothing that is installed holds the prefix, so the whole may be moved.
include(CMakePackageConfigHelpers)

set(public_headers
  export.h
  configuration/appliedoptions.h
  configuration/condition.h
  configuration/configuration.h
  configuration/configurationsetter.h
  configuration/default_config.h
  configuration/ranges.h
  configuration/reader.h
  inspect/inspect.h
  inspect/findings/check.h
  inspect/findings/finding.h
  inspect/findings/print.h
  inspect/findings/rules.h
  inspect/knowledge/catalogue.h
  inspect/knowledge/optioninfo.h
  inspect/runs/explanation.h
  inspect/runs/file.h
  inspect/runs/place.h
  inspect/runs/resolution.h
  inspect/runs/run.h
  inspect/runs/settingstext.h
  inspect/words/words.h
  options/optionparser.h
  utils/exception.h
  utils/hash.h
  utils/hashmap.h
  utils/hashtable.h
  utils/nodepool.h
  utils/prefetch.h
  utils/primes.h
  utils/str.h
)
foreach(header IN LISTS public_headers)
  get_filename_component(folder "dalvo/${header}" DIRECTORY)
  install(FILES "${PROJECT_SOURCE_DIR}/dalvo/${header}"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}" COMPONENT dalvo_development)
endforeach()
install(FILES "${PROJECT_BINARY_DIR}/include/dalvo/version.h"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/dalvo" COMPONENT dalvo_development)

# The libraries, and for each kind a file that defines the same targets by it: dalvo-config.cmake chooses.
set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/dalvo")
function(dalvo_install_libraries kind suffix)
  install(TARGETS dalvo_configuration${suffix} dalvo_defaults${suffix} dalvo_default_symbols EXPORT dalvo_${kind}
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dalvo_runtime NAMELINK_COMPONENT dalvo_development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dalvo_development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  )
  install(TARGETS dalvo_inspect${suffix} EXPORT dalvo_${kind}
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dalvo_inspect NAMELINK_COMPONENT dalvo_development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dalvo_development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  )
  install(EXPORT dalvo_${kind} FILE dalvo-${kind}-targets.cmake NAMESPACE dalvo::
    DESTINATION "${package_folder}" COMPONENT dalvo_development)
endfunction()
if(BUILD_SHARED_LIBS)
  dalvo_install_libraries(shared "")
  dalvo_install_libraries(static _static)
else()
  dalvo_install_libraries(static "")
endif()

# Before 1.0.0 a minor version may change the interface.
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/dalvo-config-version.cmake"
  VERSION "${PROJECT_VERSION}" COMPATIBILITY SameMinorVersion)
install(
  FILES "${PROJECT_SOURCE_DIR}/cmake/dalvo-config.cmake" "${CMAKE_CURRENT_BINARY_DIR}/dalvo-config-version.cmake"
  DESTINATION "${package_folder}" COMPONENT dalvo_development
)

# From dalvo.pc to a folder of the installation, so that pkg-config finds it wherever the whole is moved.
function(dalvo_from_pc_file folder result)
  file(RELATIVE_PATH path "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${folder}")
  string(REGEX REPLACE "/$" "" path "${path}")
  set(${result} "\${pcfiledir}/${path}" PARENT_SCOPE)
endfunction()
dalvo_from_pc_file("${CMAKE_INSTALL_PREFIX}" pc_prefix)
dalvo_from_pc_file("${CMAKE_INSTALL_FULL_INCLUDEDIR}" pc_includedir)
dalvo_from_pc_file("${CMAKE_INSTALL_FULL_LIBDIR}" pc_libdir)
set(pc_libs_private "")
if("stdc++" IN_LIST CMAKE_CXX_IMPLICIT_LINK_LIBRARIES) # what a static link needs that no C++ compiler drives
  set(pc_libs_private "-lstdc++ -lm")
elseif("c++" IN_LIST CMAKE_CXX_IMPLICIT_LINK_LIBRARIES)
  set(pc_libs_private "-lc++ -lc++abi -lm")
endif()
foreach(name dalvo dalvo-inspect)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in" "${CMAKE_CURRENT_BINARY_DIR}/${name}.pc" @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${name}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT dalvo_development)
endforeach()

# The documents, laid out as in the sources, so that their links lead somewhere. Not in the host's own folder.
set(document_folder "${CMAKE_INSTALL_DATAROOTDIR}/doc/dalvo")
install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/SECURITY.md"
  DESTINATION "${document_folder}" COMPONENT dalvo_development)
install(FILES "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${PROJECT_SOURCE_DIR}/CONTRIBUTING.md"
  DESTINATION "${document_folder}" COMPONENT dalvo_development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs"
  DESTINATION "${document_folder}" COMPONENT dalvo_development)
install(FILES "${PROJECT_SOURCE_DIR}/dalvo/configuration/default.cfg"
  DESTINATION "${document_folder}/dalvo/configuration" COMPONENT dalvo_development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples"
  DESTINATION "${document_folder}" COMPONENT dalvo_development PATTERN CMakeLists.txt EXCLUDE)
