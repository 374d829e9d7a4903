# Run by CPack when the packages are made: opens each again for what CPack has no variables for. Which architectures may
# be installed side by side is said, and the dynamic linker's cache is renewed by a trigger, not by scripts.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(root "${package}.opened")
  file(REMOVE_RECURSE "${root}")
  execute_process(COMMAND dpkg-deb -R "${package}" "${root}" COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE "${root}/DEBIAN/postinst" "${root}/DEBIAN/postrm")

  file(GLOB_RECURSE libraries RELATIVE "${root}" "${root}/usr/lib/*/lib*")
  file(GLOB tools "${root}/usr/bin/*")
  file(READ "${root}/DEBIAN/control" control)
  string(REGEX REPLACE "\n+$" "\n" control "${control}") # an empty line would end it
  if(tools)
    string(APPEND control "Multi-Arch: foreign\n")
  elseif(libraries)
    string(APPEND control "Multi-Arch: same\n")
  endif()
  file(WRITE "${root}/DEBIAN/control" "${control}")
  if(EXISTS "${root}/DEBIAN/shlibs")
    file(WRITE "${root}/DEBIAN/triggers" "activate-noawait ldconfig\n")
  endif()

  execute_process(COMMAND dpkg-deb --root-owner-group -b "${root}" "${package}" COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE "${root}")
endforeach()
