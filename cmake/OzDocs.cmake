# The API reference and the guide as pages, in docs/html of the build directory.
find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  configure_file(docs/Doxyfile.in Doxyfile @ONLY)
  add_custom_target(docs COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/Doxyfile VERBATIM COMMENT "Writing the reference")
endif()
