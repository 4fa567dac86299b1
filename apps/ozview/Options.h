#ifndef OZVIEW_OPTIONS_H
#define OZVIEW_OPTIONS_H

#include <string>
#include <vector>

/// What the command line asks for.
struct Options {
  enum Verdict { RUN, HELP, VERSION, WRONG };

  /// Reads the command line. With WRONG, `fault` says in one line what is wrong with it.
  Verdict parse(int argc, char **argv, std::string &fault);

  /// The text of --help.
  static char const *usage();

  /// Whether anything is asked for that needs no window.
  bool isBatch() const { return info || write || !output.empty(); }

  std::vector<std::string> files;

  std::string output; ///< the PNG of --output; empty for none
  int width = 800;    ///< pixels of the window or the picture
  int height = 600;
  double time = 0;                             ///< seconds since the start of the scene's clocks
  float azimuth = 30, elevation = 20;          ///< degrees; see Navigation
  float background[3] = {0.16f, 0.18f, 0.22f}; ///< red, green, blue from 0 to 1

  bool audio = false; ///< the scene is heard
  bool info = false, json = false;
  bool write = false;
  std::string writeTo; ///< empty for the standard output stream

private:
  bool readSize(char const *text);
  bool readView(char const *text);
  bool readBackground(char const *text);
};

#endif
