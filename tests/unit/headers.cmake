# Every public header stands alone: each is the whole of a translation unit of its own, included twice.
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}/include"
  "${PROJECT_SOURCE_DIR}/include/qel/*.hpp")
set(units "")
set(all_includes "")
foreach(header IN LISTS headers)
  string(REPLACE "/" "_" name "${header}")
  set(unit "${CMAKE_CURRENT_BINARY_DIR}/headers/${name}.cpp")
  file(CONFIGURE OUTPUT "${unit}" CONTENT "#include <${header}>\n#include <${header}>\n")
  list(APPEND units "${unit}")
  string(APPEND all_includes "#include <${header}>\n")
endforeach()
add_library(header_self_containment OBJECT ${units})
target_link_libraries(header_self_containment PRIVATE qel::qel project_options)

# All of them together, and the examples, which instantiate most of them, under each compiler at hand and each
# standard that users may have.
set(all_headers "${CMAKE_CURRENT_BINARY_DIR}/headers/all.cpp")
file(CONFIGURE OUTPUT "${all_headers}" CONTENT "${all_includes}")
find_program(HEADERS_GXX g++)
find_program(HEADERS_CLANGXX NAMES clang++ clang++-14)
foreach(compiler IN ITEMS HEADERS_GXX HEADERS_CLANGXX)
  if(NOT ${compiler})
    continue()
  endif()
  get_filename_component(name "${${compiler}}" NAME)
  foreach(standard IN ITEMS 17 20)
    add_test(NAME "headers.${name}_c++${standard}"
      COMMAND "${${compiler}}" -std=c++${standard} -fsyntax-only
        "$<TARGET_PROPERTY:project_options,INTERFACE_COMPILE_OPTIONS>" "-I${PROJECT_SOURCE_DIR}/include"
        "${all_headers}" "${PROJECT_SOURCE_DIR}/examples/filter_pgm.cpp" "${PROJECT_SOURCE_DIR}/examples/print_tree.cpp"
      COMMAND_EXPAND_LISTS)
  endforeach()
endforeach()
