# SPDX-License-Identifier: Apache-2.0
# Debian packages by CPack: liborvane<major> holds the shared library, liborvane-dev all that is needed to compile with
# it. scripts/package makes them; `cpack` in a build tree does, too, for the prefix that the tree was configured with.
find_program(GZIP_PROGRAM gzip)
mark_as_advanced(GZIP_PROGRAM)
if(NOT GZIP_PROGRAM)
  return()
endif()

set(runtime_package liborvane${PROJECT_VERSION_MAJOR})
set(development_package liborvane-dev)
set(maintainer "Orvane developers <orvane@packages.debian.org>")

# Each package has its own copyright and changelog. The date is that of the last commit, so that a package can be made
# twice and be the same.
execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} log -1 --format=%cD OUTPUT_VARIABLE package_date
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT package_date)
  set(package_date "Thu, 01 Jan 1970 00:00:00 +0000")
endif()
foreach(component runtime development)
  set(package ${${component}_package})
  set(folder ${PROJECT_BINARY_DIR}/debian/${package})
  configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${folder}/changelog @ONLY)
  execute_process(COMMAND ${GZIP_PROGRAM} -9 -n -f -k ${folder}/changelog COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${folder}/changelog.gz ${CMAKE_CURRENT_LIST_DIR}/debian/copyright
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvane)
set(CPACK_PACKAGE_CONTACT ${maintainer})
set(CPACK_PACKAGE_VENDOR Orvane)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/OrvaneRepack.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "")
set(CPACK_DEBIAN_PACKAGE_SOURCE orvane)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The first line of a description is PROJECT_DESCRIPTION.
set(about "Orvane is a library that a host program loads and calls: special functions,
symbolic expressions, distributions and their fits, optimisation, networks,
signals, programmes, spatial mathematics.

")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# The cache of the linker is made anew by a trigger, without scripts (OrvaneRepack.cmake).
file(WRITE ${PROJECT_BINARY_DIR}/debian/shlibs
     "liborvane ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n")
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/shlibs ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${about}This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "${about}This package holds the headers, a CMake package and a pkg-config file.")
include(CPack)
