#include "oz/ozGlobal.h"

#include "oz/ozPtrArray.h"

#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>

namespace {

char const *const SeverityText[] = {"ALWAYS", "FATAL", "WARN", "NOTICE", "INFO", "DEBUG", "FP_DEBUG"};
char const *const TypeText[] = {"USAGE",       "RESOURCE",   "SYSERR",     "ASSERT",       "PRINT", "INTERNAL",
                                "FP_OVERFLOW", "FP_DIVZERO", "FP_INVALID", "FP_UNDERFLOW", "MORE"};

// The entry of a table at an index, or the nearest one.
template <int N> char const *nearest(char const *const (&table)[N], int index) {
  return table[index < 0 ? 0 : index < N ? index : N - 1];
}

char const *const FileModeText[] = {"r", "w", "r", "r"};

// The file path, of ozString: first the whole text as it was set, then its pieces. It lives as long as the process.
ozPtrArray &filePath() {
  static ozPtrArray *path = new ozPtrArray(8);
  return *path;
}

ozString *filePathEntry(unsigned int i) { return static_cast<ozString *>(filePath().get(i)); }

// Hands the non-empty pieces of a path to use(piece), in order, until that gives true. Whether it did.
template <class Function> int anyPiece(char const *path, Function use) {
  char *copy = strdup(path), *rest = nullptr;
  int done = 0;
  for (char *piece = copy ? strtok_r(copy, ":", &rest) : nullptr; piece && !done; piece = strtok_r(nullptr, ":", &rest))
    done = use(piece);
  free(copy);
  return done;
}

// Whether a data file opens. Directories open too, pipes would wait for a writer and terminals for their user, and
// other devices never end: none of them is a data file. What is written may go to a device.
int opens(ozString const &name, int mode) {
  struct stat status;
  if (stat(name.getString(), &status) == 0) {
    if (S_ISDIR(status.st_mode) || S_ISFIFO(status.st_mode)) return 0;
    if (S_ISCHR(status.st_mode) && mode != ozGlobal::WRITE_FMODE) return 0;
  }
  FILE *file = fopen(name.getString(), nearest(FileModeText, mode));
  if (!file) return 0;
  fclose(file);
  return 1;
}

int opensUnder(char const *directory, ozString const &name, ozString &result, int mode) {
  result = directory;
  if (directory[strlen(directory) - 1] != '/') result += "/";
  result += name.getString();
  return opens(result, mode);
}

// The name is a copy of the caller's, which may be the result's own text.
int search(ozString const &name, ozString &result, int mode) {
  if (!name) return 0;
  result = name;
  if (opens(result, mode)) return 1;
  auto under = [&](char const *directory) { return opensUnder(directory, name, result, mode); };
  char const *environment = getenv("OZ_DATAFILE_PATH");
  if (environment && anyPiece(environment, under)) return 1;
  for (unsigned int i = 1; i < filePath().getCount(); ++i)
    if (under(filePathEntry(i)->getString())) return 1;
  return 0;
}

} // namespace

void ozGlobal::notify(NotifySeverityEnum severity, NotifyTypeEnum type, char const *message) {
  fprintf(stderr, "(%s, %s): %s\n", nearest(SeverityText, severity), nearest(TypeText, type), message ? message : "");
}

void ozGlobal::setFilePath(char const *text) {
  ozString whole(text); // before the entries go: text may be the path's own
  for (unsigned int i = 0; i < filePath().getCount(); ++i) delete filePathEntry(i);
  filePath().setCount(0);
  if (!whole) return;
  auto append = [](char const *piece) { return filePath().append(new ozString(piece)), 0; };
  append(whole.getString());
  anyPiece(whole.getString(), append);
}

char const *ozGlobal::getFilePath() { return filePath().getCount() ? filePathEntry(0)->getString() : nullptr; }

int ozGlobal::findFile(char const *name, ozString &result, FileModeEnum mode) {
  ozString whole(name);
  result.makeEmpty();
  if (search(whole, result, mode)) return 1;
  char const *slash = !whole ? nullptr : strrchr(whole.getString(), '/');
  return slash ? search(slash, result, mode) : 0; // with the slash, which stands first: meant
}

int ozGlobal::findFilePath(char const *name, ozString &result, FileModeEnum mode) { return search(name, result, mode); }
