#ifndef TESTS_SUPPORT_FONTS_H
#define TESTS_SUPPORT_FONTS_H

#include <gtest/gtest.h>
#include <string>

/// The file, without its folder, of the face that this machine has for "serif" or "sans-serif". Empty where there is
/// none, or where the library is built without fonts.
std::string fontFile(char const *family, bool bold = false);

/// Leaves the test where no text can be drawn.
#define SKIP_WITHOUT_FONT()                                                                                            \
  if (fontFile("sans-serif").empty()) GTEST_SKIP() << "SKIPPED: there is no font here"

/// Leaves the test where one face serves for roman and swiss.
#define SKIP_WITH_ONE_FAMILY()                                                                                         \
  if (fontFile("serif") == fontFile("sans-serif"))                                                                     \
  GTEST_SKIP() << "SKIPPED: the only font here is " << fontFile("serif")

#endif
