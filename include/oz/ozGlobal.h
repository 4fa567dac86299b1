#ifndef OZ_GLOBAL_H
#define OZ_GLOBAL_H

#include "oz/ozString.h"

/// The library's diagnostics and its search for data files. One thread at a time.
class OZ_API ozGlobal {
public:
  enum NotifySeverityEnum : int { ALWAYS, FATAL, WARN, NOTICE, INFO, DEBUG, FP_DEBUG };
  enum NotifyTypeEnum : int {
    USAGE,
    RESOURCE,
    SYSERR,
    ASSERT,
    PRINT,
    INTERNAL,
    FP_OVERFLOW,
    FP_DIVZERO,
    FP_INVALID,
    FP_UNDERFLOW,
    MORE
  };
  /// How a data file is tried: for reading, or for writing, which creates it.
  enum FileModeEnum : int { READ_FMODE, WRITE_FMODE, READ_BINARY_FMODE, READ_TEXT_FMODE };

  /// Prints "(SEVERITY, TYPE): message" and a line end on the standard error stream. Filters nothing and always
  /// returns. A value outside the enumeration prints as the nearest one.
  static void notify(NotifySeverityEnum, NotifyTypeEnum, char const *message);

  /// Sets the directories in which data files are looked for, parted by ":"; null or "" for none.
  static void setFilePath(char const *);
  /// The path as it was set; null if none is.
  static char const *getFilePath();

  /// Looks for a data file as findFilePath does, then for the name's last component with its leading slash. 1 if found,
  /// with the name that opened in result. Directories and pipes are no data files.
  static int findFile(char const *name, ozString &result, FileModeEnum);
  /// Looks for a data file under its name as it stands, then in the directories of the environment variable
  /// OZ_DATAFILE_PATH, then in those of setFilePath. If it is not found, 0, and result holds the last name tried. Every
  /// try opens the file: WRITE_FMODE creates it at the first place that allows it.
  static int findFilePath(char const *name, ozString &result, FileModeEnum);
};

#endif
