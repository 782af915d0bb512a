# SPDX-License-Identifier: Apache-2.0
# Run by CPack on the packages that it made. CPack adds scripts that call ldconfig to a package with a shared library;
# the package's trigger does that already, and without scripts it can be installed into an empty root.
find_program(DPKG_DEB_PROGRAM dpkg-deb REQUIRED)
foreach(package ${CPACK_PACKAGE_FILES})
  set(folder ${package}.unpacked)
  execute_process(COMMAND ${DPKG_DEB_PROGRAM} --raw-extract ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS ${folder}/DEBIAN/postinst)
    file(REMOVE ${folder}/DEBIAN/postinst ${folder}/DEBIAN/postrm)
    execute_process(COMMAND ${DPKG_DEB_PROGRAM} --root-owner-group -Z${CPACK_DEBIAN_COMPRESSION_TYPE} --build ${folder}
                            ${package} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
  file(REMOVE_RECURSE ${folder})
endforeach()
