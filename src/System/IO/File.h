#pragma once
// CFile: static operations on files named by path.

#include "System/Object.h"

namespace Corvane::Mox {

class CFile {
 public:
  // The size in bytes, -1 when the path is null or names nothing.
  static long long GetLength(CString* path);
  // True when the path names something that is not a folder (links are followed).
  static bool Exists(const char* path);
  static bool Exists(CString* path);
  // Removes the file; failures are mapped by FileResults::FromErrno.
  static Result Delete(CString* path);
};

// The results of failed removals, shared by CFile and CDirectory.
namespace FileResults {
// EPERM read only, ENOENT does not exist, EACCES access denied, EMLINK
// (reported as a symbolic link), ENAMETOOLONG too long, ENOTEMPTY not
// empty, anything else ResultError with the number; details name the path.
Result FromErrno(int error, const char* path);
}  // namespace FileResults

}  // namespace Corvane::Mox
