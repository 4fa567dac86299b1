#include "program.h"
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <signal.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string makeFolder() {
  char pattern[] = "./ozviewXXXXXX";
  return std::filesystem::absolute(mkdtemp(pattern)).string();
}

} // namespace

Folder::Folder() : path(makeFolder()) {}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::string Folder::write(std::string const &name, std::string const &text) const {
  std::ofstream(*this / name, std::ios::binary) << text;
  return *this / name;
}

std::string textOf(std::string const &file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

Program::Program(std::vector<std::string> const &arguments, bool hasDisplay, std::string const &program) {
  std::vector<char *> words;
  std::string const out = folder / "out", err = folder / "err";
  words.push_back(const_cast<char *>(program.c_str()));
  for (std::string const &argument : arguments) words.push_back(const_cast<char *>(argument.c_str()));
  words.push_back(nullptr);
  _process = fork();
  if (_process != 0) return;
  dup2(open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 1);
  dup2(open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), 2);
  if (!hasDisplay) unsetenv("DISPLAY");
  // The toolkit unloads the driver at the end, whose leaks the leak check cannot name then.
  if (hasDisplay) setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
  if (chdir(folder.path.c_str()) == 0) execv(program.c_str(), words.data());
  _exit(127);
}

Program::~Program() {
  if (!isRunning()) return;
  kill(_process, SIGKILL);
  waitpid(_process, nullptr, 0);
}

bool Program::isRunning() {
  int status;
  if (_process > 0 && waitpid(_process, &status, WNOHANG) == _process) {
    _process = 0;
    _status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  return _process > 0;
}

int Program::wait(int seconds) {
  for (int i = 0; i < seconds * 100 && isRunning(); i++) usleep(10000);
  return _status;
}

ViewerRun::ViewerRun(std::vector<std::string> const &arguments) {
  Program program(arguments);
  status = program.wait(300);
  out = program.out();
  err = program.err();
}
