# Every public header stands alone: each is the whole of a translation unit of its own, included twice, under each
# compiler and each standard that users may have. The examples, which instantiate most headers, go along.
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}/include"
  "${PROJECT_SOURCE_DIR}/include/qel/*.hpp")
set(units "${PROJECT_SOURCE_DIR}/examples/filter_pgm.cpp" "${PROJECT_SOURCE_DIR}/examples/print_tree.cpp")
# So does the example in the README.
file(READ "${PROJECT_SOURCE_DIR}/README.md" readme)
string(REGEX REPLACE ".*```cpp\n([^`]*)```.*" "\\1" readme_example "${readme}")
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/headers/readme.cpp" CONTENT "${readme_example}" @ONLY)
list(APPEND units "${CMAKE_CURRENT_BINARY_DIR}/headers/readme.cpp")
foreach(header IN LISTS headers)
  string(REPLACE "/" "_" name "${header}")
  set(unit "${CMAKE_CURRENT_BINARY_DIR}/headers/${name}.cpp")
  file(CONFIGURE OUTPUT "${unit}" CONTENT "#include <${header}>\n#include <${header}>\n")
  list(APPEND units "${unit}")
endforeach()

set(compiler_gcc g++)
set(compiler_clang clang++)
set(compiler_libcxx clang++ -stdlib=libc++)
set(compiler_windows x86_64-w64-mingw32-g++-posix)
set(compiler_aarch64 aarch64-linux-gnu-g++)
foreach(compiler IN ITEMS gcc clang libcxx windows aarch64)
  foreach(standard IN ITEMS 17 20)
    add_test(NAME "headers.${compiler}_c++${standard}"
      COMMAND ${compiler_${compiler}} -std=c++${standard} -fsyntax-only
        "$<TARGET_PROPERTY:attribute_profile_options,INTERFACE_COMPILE_OPTIONS>" "-I${PROJECT_SOURCE_DIR}/include" ${units}
      COMMAND_EXPAND_LISTS)
  endforeach()
endforeach()
