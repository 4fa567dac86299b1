#include "support/fonts.h"

#ifdef OZ_HAVE_FONTS

#include <filesystem>
#include <fontconfig/fontconfig.h>

std::string fontFile(char const *family, bool bold) {
  FcPattern *const wanted =
      FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, family, FC_WEIGHT, FcTypeInteger,
                     bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR, FC_SCALABLE, FcTypeBool, FcTrue, nullptr);
  FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
  FcDefaultSubstitute(wanted);
  FcResult result = FcResultNoMatch;
  FcPattern *const found = FcFontMatch(nullptr, wanted, &result);
  FcPatternDestroy(wanted);
  if (!found) return "";
  FcChar8 *file = nullptr;
  FcPatternGetString(found, FC_FILE, 0, &file);
  std::string const name = file ? std::filesystem::path(reinterpret_cast<char *>(file)).filename().string() : "";
  FcPatternDestroy(found);
  return name;
}

#else

std::string fontFile(char const *, bool) { return ""; }

#endif
