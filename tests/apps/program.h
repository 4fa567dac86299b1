#ifndef TESTS_APPS_PROGRAM_H
#define TESTS_APPS_PROGRAM_H

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

/// A folder of its own, gone with all that is in it when this object is.
class Folder {
public:
  Folder();
  ~Folder();
  Folder(Folder const &) = delete;
  Folder &operator=(Folder const &) = delete;

  std::string operator/(std::string const &name) const { return path + "/" + name; }
  /// Writes a file and returns its path.
  std::string write(std::string const &name, std::string const &text) const;

  std::string const path;
};

std::string textOf(std::string const &file);

/// A program, the viewer unless another is named, started with these arguments in a folder of its own. Only with a
/// display does it see the X server.
class Program {
public:
  explicit Program(std::vector<std::string> const &arguments, bool hasDisplay = false,
                   std::string const &program = OZ_OZVIEW);
  /// Ends it if it still runs.
  ~Program();
  Program(Program const &) = delete;
  Program &operator=(Program const &) = delete;

  /// Waits for its end, at most so many seconds; returns the exit status, -1 if there is none.
  int wait(int seconds = 60);
  bool isRunning();
  std::string out() const { return textOf(folder / "out"); }
  std::string err() const { return textOf(folder / "err"); }

  Folder folder;

private:
  pid_t _process;
  int _status = -1;
};

/// A run to the end.
struct ViewerRun {
  explicit ViewerRun(std::vector<std::string> const &arguments);
  int status;
  std::string out, err;
};

inline std::string model(std::string const &name) { return OZ_SOURCE_DIR "/examples/models/" + name + ".wrl"; }

/// Real files, which not every checkout has beside it.
inline std::string sharedFile(std::string const &name) { return OZ_SOURCE_DIR "/../shared/data/wrl/" + name; }
inline bool hasSharedFiles() { return std::filesystem::exists(OZ_SOURCE_DIR "/../shared/data/wrl"); }

#endif
