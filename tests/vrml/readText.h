#ifndef OZ_TESTS_VRML_READ_TEXT_H
#define OZ_TESTS_VRML_READ_TEXT_H

#include <stdio.h>
#include <unistd.h>

#include <string>

#include "oz/OzScene3D.h"
#include "support/capture.h"

/// A file with a text, gone when this object is.
class TextFile {
public:
  explicit TextFile(std::string const &text, std::string const &name = "") : path(name) {
    if (path.empty()) {
      char pattern[] = "./readXXXXXX";
      close(mkstemp(pattern));
      path = pattern;
    }
    FILE *const file = fopen(path.c_str(), "w");
    fwrite(text.data(), 1, text.size(), file);
    fclose(file);
  }
  ~TextFile() { unlink(path.c_str()); }
  std::string path;
};

/// The graph that a text reads as, behind a good header line, and what was said about it.
class Reading {
public:
  explicit Reading(std::string const &text, std::string const &header = "#VRML V2.0 utf8\n") {
    TextFile const file(header + text);
    CaptureStderr err;
    ozContainer *container = nullptr;
    ok = vlDB::readFile(file.path.c_str(), container, files);
    messages = err.text();
    root = static_cast<ozGroup *>(container);
    if (root) root->ref();
  }
  ~Reading() {
    if (root) root->unref();
  }

  int count() const { return root->getChildCount(); }
  template <class Class = ozNode> Class *child(int i) const {
    return static_cast<Class *>(static_cast<ozContainer *>(root->getChild(i)));
  }
  /// The messages, without where in the file they arose.
  std::string said() const {
    std::string result = messages;
    for (size_t at; (at = result.find("\tOccurred at line")) != std::string::npos;)
      result.erase(at, result.find('\n', at) + 1 - at);
    return result;
  }

  unsigned char ok;
  ozGroup *root;
  ozPtrArray files;
  std::string messages;
};

#endif
