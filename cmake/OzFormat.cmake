# The style of the sources: `format` mends it, `format-check` fails where it is not kept.
find_program(CLANG_FORMAT NAMES clang-format-14 clang-format)
if(CLANG_FORMAT)
  file(GLOB_RECURSE OZ_STYLED CONFIGURE_DEPENDS include/*.h src/*.h src/*.cpp apps/*.h apps/*.cpp examples/*.cpp bench/*.cpp
    tests/*.h tests/*.cpp)
  add_custom_target(format COMMAND ${CLANG_FORMAT} -i ${OZ_STYLED} VERBATIM COMMENT "Mending the style")
  add_custom_target(format-check COMMAND ${CLANG_FORMAT} --dry-run -Werror ${OZ_STYLED} VERBATIM COMMENT "Checking the style")
endif()
