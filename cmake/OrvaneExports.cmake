# SPDX-License-Identifier: Apache-2.0
# The dynamic symbols of the library are the functions that include/orvane/*.h declare with ORVANE_API, and no other:
# a linker version script is written from the headers. Hidden visibility alone would let instances of the standard
# library's templates through.

# orvane_declared_functions(result): the sorted names that the headers declare.
function(orvane_declared_functions result)
  file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/orvane/*.h)
  list(REMOVE_ITEM headers ${PROJECT_SOURCE_DIR}/include/orvane/export.h)
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${headers})
  set(names "")
  foreach(header ${headers})
    file(READ ${header} text)
    string(REGEX MATCHALL "ORVANE_API[^;(]*\\(" declarations "${text}")
    foreach(declaration ${declarations})
      string(REGEX REPLACE ".*[^A-Za-z0-9_]([A-Za-z_][A-Za-z0-9_]*)[ \t\r\n]*\\($" "\\1" name "${declaration}")
      list(APPEND names ${name})
    endforeach()
  endforeach()
  list(SORT names)
  set(${result} ${names} PARENT_SCOPE)
endfunction()

# orvane_export_only_declared(target): links the shared library with that version script. The symbols carry the major
# version as their node, so that a program says which library it was linked with.
function(orvane_export_only_declared target)
  orvane_declared_functions(names)
  list(JOIN names ";\n    " globals)
  set(map ${PROJECT_BINARY_DIR}/orvane.map)
  file(CONFIGURE OUTPUT ${map} CONTENT "ORVANE_@PROJECT_VERSION_MAJOR@ {\n  global:\n    @globals@;\n  local:\n    *;\n};\n" @ONLY)
  target_link_options(${target} PRIVATE LINKER:--version-script=${map})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
endfunction()
