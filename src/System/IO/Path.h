#pragma once
// CPath: operations on path texts. The separator is "/"; "\" is recognised
// as one as well where a path may come from elsewhere, and a ":" ends a
// drive prefix. None of these fail: unusable input gives null (or false).
// Strings returned are new and owned by the caller.

#include "System/Object.h"

namespace Corvane::Mox {

class CPath {
 public:
  // The alphabet GetRandomFileName draws from (64 characters).
  static constexpr const char* RandomFileNameChars =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-";
  // Results of Combine at least this long are refused.
  static constexpr int MaxPathLength = 1024;

  static const char* GetInvalidFileNameChars();
  static const wchar_t* GetInvalidFileNameWChars();
  static bool IsValidFileName(const char* name);
  static bool IsValidFileName(CString* name);
  static const char* GetInvalidPathChars();
  static const wchar_t* GetInvalidPathWChars();
  // Null is invalid, empty is valid, otherwise valid without a ":".
  static bool IsValidPath(const char* path);
  static bool IsValidPath(CString* path);
  // Starts with a separator, or has a drive letter ("C:").
  static bool IsPathRooted(CString* path);
  // Starts with two separators ("//server/share", "\\server\share").
  static bool IsUncPath(CString* path);

  // Eight characters from RandomFileNameChars, chosen with rand().
  static CString* GetRandomFileName();
  // The text after the last "/", "\" or ":".
  static CString* GetFileName(CString* path);
  static CString* GetFileNameWithoutExtension(CString* path);
  // The text before the last separator, ignoring a drive prefix and the
  // separators that root the path; null when there is none.
  static CString* GetDirectoryName(CString* path);
  // a and b joined by "/" where neither side has one already.
  static CString* Combine(const char* a, const char* b);
  static CString* Combine(CString* a, CString* b, char separator);
  static bool HasExtension(CString* path);
  // The extension with its dot ("file.tar.gz" gives ".gz"); null when the
  // last name has none or ends with the dot.
  static CString* GetExtension(CString* path);
  // path with extension appended ("." inserted when it has none).
  static CString* AddExtension(CString* path, const char* extension);
  static CString* AddExtension(CString* path, CString* extension);
  // path without its extension, then with extension appended unless that is null.
  static CString* ChangeExtension(CString* path, const char* extension);
  static CString* ChangeExtension(CString* path, CString* extension);
  // The value of TMPDIR, or null when it is not set.
  static CString* GetTempDirectory();
  // "directory/prefix_xxxxxx" (six random hexadecimal digits) naming nothing
  // that exists yet; null after 1,000 names that all exist.
  static CString* GetTempFilePath(const char* directory, const char* prefix);
  static CString* GetTempFilePath(CString* directory, const char* prefix);
  static CString* GetTempFilePath(const char* directory, CString* prefix);
  static CString* GetTempFilePath(CString* directory, CString* prefix);
};

}  // namespace Corvane::Mox
