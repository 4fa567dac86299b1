#ifndef OZ_PLATFORM_H
#define OZ_PLATFORM_H

/// @file
/// What every public header needs: the export mark, the window system's handles and the check of programming faults.

#define OZ_API __attribute__((visibility("default")))

/// A drawing device: a window's or an offscreen one's. Opaque; see ozDevice for what it can do.
struct ozDeviceRecord;
typedef ozDeviceRecord *HDC;

/// The window system's own id of a window.
typedef unsigned long HWND;

/// Prints one line on the standard error stream and aborts. Reached only in builds with OZ_HARDENED.
[[noreturn]] OZ_API void ozFault(char const *what, char const *file, int line);

/// OZ_REQUIRE(condition, "what"): states what a caller owes. Checked in hardened builds, free in all others.
#ifdef OZ_HARDENED
#define OZ_REQUIRE(condition, what) ((condition) ? (void)0 : ozFault(what, __FILE__, __LINE__))
#else
#define OZ_REQUIRE(condition, what) ((void)0)
#endif

#endif
