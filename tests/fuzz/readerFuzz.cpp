// Any bytes at all as the text of a file behind a good header line; what is read is used as an application would.
//
//   cmake --preset fuzz && cmake --build --preset fuzz
//   mkdir -p out && build/fuzz/readerFuzz -dict=tests/fuzz/vrml.dict -timeout=10 out tests/fuzz/corpus
//
// The suppressions of tests/support/lsan.supp apply. What it finds becomes a test in tests/vrml.
#include "../vrml/useGraph.h"

// What the library says about a broken file is not what is looked for here.
extern "C" int LLVMFuzzerInitialize(int *, char ***) {
  stderr = fopen("/dev/null", "w");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(unsigned char const *data, size_t size) {
  std::string text = "#VRML V2.0 utf8\n";
  text.append(reinterpret_cast<char const *>(data), size);
  readAndUse(text.data(), text.size());
  return 0;
}
