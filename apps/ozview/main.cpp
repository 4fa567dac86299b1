// Shows VRML files: the library's viewer. See Options::usage.

#include "Options.h"
#include "Report.h"
#include "Scene.h"
#include "Snapshot.h"
#include "Speaker.h"
#include "Viewer.h"
#include <cerrno>
#include <cstring>

namespace {

enum ExitStatus { GOOD = 0, UNREADABLE = 1, WRONG_USAGE = 2 };

int fail(std::string const &what, std::string const &reason) {
  fprintf(stderr, "ozview: %s: %s\n", what.c_str(), reason.c_str());
  return UNREADABLE;
}

// Writes the graph in the library's text form, behind a header line: the reader takes it back as far as it knows the
// classes and fields.
int writeGraph(Scene const &scene, std::string const &file) {
  FILE *const out = file.empty() ? stdout : fopen(file.c_str(), "w");
  if (!out) return fail(file, strerror(errno));
  fputs("#VRML V2.0 utf8\n", out);
  {
    ozOutput output(out);
    for (Scene::Part const &part : scene.parts())
      for (int i = 0; i < part.root->getChildCount(); i++)
        static_cast<ozObject *>(part.root->getChild(i))->write(&output);
  }
  fputs("\n", out);
  bool const good = !ferror(out);
  return (file.empty() ? fflush(out) : fclose(out)) == 0 && good ? GOOD : fail(file, strerror(errno));
}

int draw(Scene &scene, Options const &options, std::string const &file) {
  std::string reason;
  return drawSnapshot(scene, options, file, reason) ? GOOD : fail(file, reason);
}

// Where there is no display, the picture goes here.
std::string pictureName(std::string const &model) {
  std::string name = model.substr(model.rfind('/') + 1);
  size_t const dot = name.rfind('.');
  return (dot ? name.substr(0, dot) : name) + ".png";
}

int show(Scene &scene, Speaker &speaker, Options const &options) {
  if (ozWindow::checkDisplay()) return runViewer(scene, speaker, options), GOOD;
  std::string const file = pictureName(options.files.front());
  int const status = draw(scene, options, file);
  if (status == GOOD) printf("There is no display: the picture is in %s\n", file.c_str());
  return status;
}

} // namespace

int main(int argc, char **argv) {
  Options options;
  std::string reason;
  switch (options.parse(argc, argv, reason)) {
  case Options::HELP:
    return fputs(Options::usage(), stdout) < 0 || fflush(stdout) ? UNREADABLE : GOOD;
  case Options::VERSION:
    printf("ozview of OzScene3D %s\n", OZVIEW_VERSION);
    return fflush(stdout) ? UNREADABLE : GOOD;
  case Options::WRONG:
    fprintf(stderr, "ozview: %s\nTry 'ozview --help'.\n", reason.c_str());
    return WRONG_USAGE;
  case Options::RUN:
    break;
  }

  Speaker speaker;
  if (options.audio && !speaker.open()) fputs("ozview: there is no audio device: the sounds stay silent\n", stderr);
  Scene scene;
  int status = GOOD;
  for (std::string const &file : options.files)
    if (!scene.add(file, reason)) status = fail(file, reason);
  if (status != GOOD) return status;
  if (!options.isBatch()) return show(scene, speaker, options);

  if (options.info) writeReports(scene, options.json, stdout);
  if (options.write) status |= writeGraph(scene, options.writeTo);
  if (!options.output.empty()) status |= draw(scene, options, options.output);
  if (fflush(stdout)) status |= fail("standard output", strerror(errno));
  return status;
}
