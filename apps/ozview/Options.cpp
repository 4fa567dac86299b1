#include "Options.h"
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <getopt.h>
#include <strings.h>

namespace {

// Reads exactly n finite numbers, parted by commas.
bool readNumbers(char const *text, int n, double *numbers) {
  for (int i = 0; i < n; i++) {
    char *end;
    numbers[i] = std::strtod(text, &end);
    if (end == text || !std::isfinite(numbers[i]) || *end != (i + 1 < n ? ',' : '\0')) return false;
    text = end + 1;
  }
  return true;
}

bool isModelName(std::string const &word) {
  return word.size() > 4 && !strcasecmp(word.c_str() + word.size() - 4, ".wrl");
}

enum LongOption {
  OUTPUT = 'o',
  HELP_OPTION = 'h',
  SIZE = 256,
  TIME,
  VIEW,
  BACKGROUND,
  AUDIO,
  INFO,
  JSON,
  WRITE,
  VERSION_OPTION
};

option const longOptions[] = {
    {"output", required_argument, nullptr, OUTPUT},
    {"size", required_argument, nullptr, SIZE},
    {"time", required_argument, nullptr, TIME},
    {"view", required_argument, nullptr, VIEW},
    {"background", required_argument, nullptr, BACKGROUND},
    {"audio", no_argument, nullptr, AUDIO},
    {"info", no_argument, nullptr, INFO},
    {"json", no_argument, nullptr, JSON},
    {"write", optional_argument, nullptr, WRITE},
    {"help", no_argument, nullptr, HELP_OPTION},
    {"version", no_argument, nullptr, VERSION_OPTION},
    {nullptr, 0, nullptr, 0},
};

} // namespace

bool Options::readSize(char const *text) {
  char *end;
  long const w = std::strtol(text, &end, 10);
  if (end == text || (*end != 'x' && *end != 'X')) return false;
  char const *const second = end + 1;
  long const h = std::strtol(second, &end, 10);
  if (end == second || *end || w < 1 || h < 1 || w > 16384 || h > 16384) return false;
  width = static_cast<int>(w);
  height = static_cast<int>(h);
  return true;
}

bool Options::readView(char const *text) {
  double angles[2];
  if (!readNumbers(text, 2, angles) || std::fabs(angles[1]) > 90) return false;
  azimuth = static_cast<float>(std::remainder(angles[0], 360));
  elevation = static_cast<float>(angles[1]);
  return true;
}

bool Options::readBackground(char const *text) {
  double colors[3];
  if (!readNumbers(text, 3, colors)) return false;
  for (int i = 0; i < 3; i++) {
    if (colors[i] < 0 || colors[i] > 1) return false;
    background[i] = static_cast<float>(colors[i]);
  }
  return true;
}

Options::Verdict Options::parse(int argc, char **argv, std::string &fault) {
  opterr = 0;
  optind = 0; // starts afresh, also in a process that has parsed before
  auto bad = [&](char const *what, char const *text) {
    fault = std::string(what) + " \"" + text + "\"";
    return WRONG;
  };

  // The leading "-" gives words in their place among the options, which --write needs.
  for (int code; (code = getopt_long(argc, argv, "-:o:h", longOptions, nullptr)) != -1;) {
    switch (code) {
    case 1:
      files.push_back(optarg);
      break;
    case OUTPUT:
      if (!*optarg) return bad("no file name:", optarg);
      output = optarg;
      break;
    case SIZE:
      if (!readSize(optarg)) return bad("--size takes WxH, each from 1 to 16384, not", optarg);
      break;
    case TIME:
      if (!readNumbers(optarg, 1, &time) || time < 0) return bad("--time takes seconds from 0, not", optarg);
      break;
    case VIEW:
      if (!readView(optarg))
        return bad("--view takes AZIMUTH,ELEVATION in degrees, elevation from -90 to 90, not", optarg);
      break;
    case BACKGROUND:
      if (!readBackground(optarg)) return bad("--background takes R,G,B, each from 0 to 1, not", optarg);
      break;
    case AUDIO:
      audio = true;
      break;
    case INFO:
      info = true;
      break;
    case JSON:
      json = true;
      break;
    case WRITE: {
      write = true;
      char const *const next = optarg ? optarg : optind < argc ? argv[optind] : nullptr;
      // A following word may as well be a FILE: models are never overwritten by accident.
      bool const isOut = next && (optarg || ((next[0] != '-' || !next[1]) && (!files.empty() || !isModelName(next))));
      if (isOut && !optarg) optind++;
      if (isOut) writeTo = next;
      if (writeTo == "-") writeTo.clear();
      break;
    }
    case HELP_OPTION:
      return HELP;
    case VERSION_OPTION:
      return VERSION;
    case ':':
      return bad("an argument is missing for", argv[optind - 1]);
    default:
      return bad("no such option:", argv[optind - 1]);
    }
  }
  files.insert(files.end(), argv + optind, argv + argc);

  if (files.empty())
    fault = "no FILE is given";
  else if (json && !info)
    fault = "--json goes with --info";
  else if (audio && isBatch())
    fault = "--audio goes with the window";
  return fault.empty() ? RUN : WRONG;
}

char const *Options::usage() {
  return "Usage: ozview [OPTION]... FILE...\n"
         "Shows VRML 2.0 files, several together in one scene. Without a display, draws a PNG named after the first\n"
         "FILE in the working directory.\n"
         "\n"
         "Instead of a window (these may be combined):\n"
         "  -o, --output OUT.png          draw one frame into a PNG; needs no X server\n"
         "      --info                    tell what the files hold\n"
         "      --json                    with --info: as JSON, an object, or an array of them for several FILEs\n"
         "      --write [OUT]             write the graph as the library's text form, to OUT or to the standard "
         "output\n"
         "                                stream. The word behind --write is OUT if it does not end in .wrl, or if a\n"
         "                                FILE comes ahead of --write; --write=OUT always is\n"
         "\n"
         "How the scene is shown, in the window or the PNG:\n"
         "      --size WxH                pixels; 800x600\n"
         "      --time SECONDS            with the scene's clocks that long after their start; 0\n"
         "      --view AZIMUTH,ELEVATION  from where, in degrees: 0,0 looks along -Z, a positive azimuth from further\n"
         "                                to the right, a positive elevation from above; 30,20\n"
         "      --background R,G,B        each from 0 to 1; 0.16,0.18,0.22\n"
         "      --audio                   let the sounds of the scene be heard, in the window\n"
         "\n"
         "  -h, --help                    print this and end\n"
         "      --version                 print the version of the library and end\n"
         "\n"
         "In the window: left drag turns, middle or shift-left drag pans, right drag or the wheel zooms, a double "
         "click\n"
         "centres on the picked point. A drag that begins on something touchable belongs to it. Keys:\n"
         "  r      the view as it was at first      h  headlight on, off\n"
         "  w      wireframe on, off                s  save a PNG in the working directory\n"
         "  space  stop the clocks, go on           f  full screen on, off\n"
         "  i      times and counts on, off         ?  print the keys\n"
         "  q, Esc  quit\n"
         "\n"
         "Files that a model names are looked for beside the model too, and in OZ_DATAFILE_PATH.\n"
         "Exit status: 0, 1 if a file cannot be read or written, 2 for a wrong command line.\n";
}
