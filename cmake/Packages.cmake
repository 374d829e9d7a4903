# Debian packages by CPack: libdalvo0 and libdalvo-inspect0 (the shared libraries; their number is the major version),
# libdalvo-dev (what hosts are built with) and dalvo-config (the tool). scripts/package makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME dalvo)
set(CPACK_PACKAGE_VENDOR dalvo)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "dalvo developers <dalvo@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/complete.cmake")
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/finish.cmake")
set(CPACK_COMPONENTS_ALL dalvo_runtime dalvo_inspect dalvo_development)
if(TARGET dalvo-config)
  list(APPEND CPACK_COMPONENTS_ALL dalvo_tool)
endif()
if(NOT BUILD_SHARED_LIBS)
  list(REMOVE_ITEM CPACK_COMPONENTS_ALL dalvo_runtime dalvo_inspect)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(library "libdalvo${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_DALVO_RUNTIME_PACKAGE_NAME "${library}")
set(CPACK_DEBIAN_DALVO_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_DALVO_RUNTIME_DESCRIPTION "configuration front end of an SMT solver (shared library)
dalvo holds the tunable options of an SMT solver, reads configuration texts
made of sections, checks each value, fills the record that the solver reads,
and writes it back.
.
This package holds the library that solvers are linked with. It expects of
its host a default configuration text and a function that is called at a
throw; libdalvo-dev has both for hosts that bring none.")

set(inspect_library "libdalvo-inspect${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_DALVO_INSPECT_PACKAGE_NAME "${inspect_library}")
set(CPACK_DEBIAN_DALVO_INSPECT_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DALVO_INSPECT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/dalvo")
set(CPACK_COMPONENT_DALVO_INSPECT_DESCRIPTION "configuration front end of an SMT solver (inspection library)
dalvo holds the tunable options of an SMT solver, reads configuration texts
made of sections, checks each value, fills the record that the solver reads,
and writes it back.
.
This package holds the library by which a solver tells its users what is wrong
with a configuration text, where a setting comes from, and what options have
to do with each other.")

set(CPACK_DEBIAN_DALVO_DEVELOPMENT_PACKAGE_NAME libdalvo-dev)
set(CPACK_DEBIAN_DALVO_DEVELOPMENT_PACKAGE_SECTION libdevel)
if(BUILD_SHARED_LIBS)
  set(CPACK_DEBIAN_DALVO_DEVELOPMENT_PACKAGE_DEPENDS
    "${library} (= ${PROJECT_VERSION}), ${inspect_library} (= ${PROJECT_VERSION})")
endif()
set(CPACK_COMPONENT_DALVO_DEVELOPMENT_DESCRIPTION "configuration front end of an SMT solver (development files)
dalvo holds the tunable options of an SMT solver, reads configuration texts
made of sections, checks each value, fills the record that the solver reads,
and writes it back.
.
This package holds the headers, the static libraries, the files by which CMake
and pkg-config find them, and the documents.")

set(CPACK_DEBIAN_DALVO_TOOL_PACKAGE_NAME dalvo-config)
set(CPACK_DEBIAN_DALVO_TOOL_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_DALVO_TOOL_DESCRIPTION "answers questions about the configuration of an SMT solver
dalvo-config lists the options of a solver that is configured by dalvo, finds
every problem of a configuration file, shows the settings in force and where
each comes from, and compares files. It brings presets for the logics of
SMT-LIB and completions for bash, zsh and fish.")

include(CPack)
