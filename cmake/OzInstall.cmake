# What `cmake --install` puts in place: library, headers, programs, CMake package and pkg-config file. Both packages find
# their prefix from where they stand, so a tree may be installed anywhere and moved.
include(CMakePackageConfigHelpers)

set(OZ_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/OzScene3D)
install(TARGETS OzScene3D EXPORT OzScene3DTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/oz DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
if(TARGET ozview)
  install(TARGETS ozview)
endif()

install(EXPORT OzScene3DTargets NAMESPACE OzScene3D:: DESTINATION ${OZ_PACKAGE_DIR})
configure_package_config_file(cmake/OzScene3DConfig.cmake.in OzScene3DConfig.cmake INSTALL_DESTINATION ${OZ_PACKAGE_DIR})
write_basic_package_version_file(OzScene3DConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OzScene3DConfig.cmake ${PROJECT_BINARY_DIR}/OzScene3DConfigVersion.cmake
  DESTINATION ${OZ_PACKAGE_DIR})

cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE OZ_PC_LIBDIR)
string(REGEX REPLACE "[^/]+" ".." OZ_PC_UP ${OZ_PC_LIBDIR}/pkgconfig)
configure_file(cmake/ozscene3d.pc.in ozscene3d.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ozscene3d.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
