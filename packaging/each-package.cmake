# Read by CPack for each kind of package. Debian's holds the files of its own component besides.
if(CPACK_GENERATOR STREQUAL "DEB")
  string(REPLACE ";ALL;" ";debian;" own_files "${CPACK_INSTALL_CMAKE_PROJECTS}")
  list(APPEND CPACK_INSTALL_CMAKE_PROJECTS ${own_files})
endif()
