# Run by CPack between installing the components and packing them: adds to each what Debian wants of a package.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" key)
  set(package "${CPACK_DEBIAN_${key}_PACKAGE_NAME}")
  set(root "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}")
  set(documents "${root}/share/doc/${package}")
  if(NOT IS_DIRECTORY "${root}")
    message(FATAL_ERROR "nothing was installed in ${root}")
  endif()

  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC) # SOURCE_DATE_EPOCH, where it is set
  configure_file("${CMAKE_CURRENT_LIST_DIR}/changelog.in" "${documents}/changelog" @ONLY)
  configure_file("${CMAKE_CURRENT_LIST_DIR}/copyright" "${documents}/copyright" COPYONLY)

  # In a folder of the system libraries are found without it.
  file(GLOB_RECURSE libraries "${root}/lib/libdalvo-inspect.so.*")
  foreach(library IN LISTS libraries)
    if(NOT IS_SYMLINK "${library}")
      file(RPATH_REMOVE FILE "${library}")
    endif()
  endforeach()

  file(GLOB_RECURSE texts "${root}/share/man/*.[1-8]" "${documents}/changelog")
  execute_process(COMMAND gzip -9n ${texts} COMMAND_ERROR_IS_FATAL ANY)
  file(GLOB_RECURSE archives "${root}/lib/*.a")
  if(archives)
    execute_process(COMMAND strip --strip-debug --enable-deterministic-archives ${archives} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
