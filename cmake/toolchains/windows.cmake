# 64-bit Windows by MinGW-w64 (Debian package g++-mingw-w64-x86-64-posix); programs run under Wine (wine64).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# The compiler's run-time goes into what is built: no system has it.
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT -static)
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# No display, no offer to download parts of it, and its files in the build folder.
find_program(ATTRIBUTE_PROFILE_WINE wine64 PATHS /usr/lib/wine DOC "Wine for 64-bit programs")
mark_as_advanced(ATTRIBUTE_PROFILE_WINE)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_COMMAND} -E env --unset=DISPLAY WINEDLLOVERRIDES=mscoree,mshtml= WINEDEBUG=-all
  WINEPREFIX=${CMAKE_BINARY_DIR}/wine ${ATTRIBUTE_PROFILE_WINE})
