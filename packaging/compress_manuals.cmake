# CPack runs this on what it has installed for packages: Debian wants manual pages compressed.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*.1)
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9n ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
