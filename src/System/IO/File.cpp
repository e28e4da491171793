#include "System/IO/File.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "System/Text.h"

namespace Corvane::Mox {

long long CFile::GetLength(CString* path) {
  struct stat status {};
  if (!path || stat(path->GetChars(), &status) != 0) return -1;
  return static_cast<long long>(status.st_size);
}

bool CFile::Exists(const char* path) {
  struct stat status {};
  return path && stat(path, &status) == 0 && !S_ISDIR(status.st_mode);
}

bool CFile::Exists(CString* path) { return path && Exists(path->GetChars()); }

Result CFile::Delete(CString* path) {
  if (!path) return ResultArgumentNull();
  if (unlink(path->GetChars()) != 0) return FileResults::FromErrno(errno, path->GetChars());
  return ResultOK();
}

namespace FileResults {

Result FromErrno(int error, const char* path) {
  switch (error) {
    case EPERM:
      // The text has always read "ready only"; log readers match on it.
      return ResultReadOnly("'%s' is ready only", path);
    case ENOENT:
      return ResultPathDoesNotExist("'%s' does not exist", path);
    case EACCES:
      return ResultAccessDenied("access to '%s' is denied", path);
    case EMLINK:
      // Too many links, reported under the symbolic-link kind as it always was.
      return ResultSymbolicLink("'%s' is a symbolic link", path);
    case ENAMETOOLONG:
      return ResultPathNameTooLong("'%s' is too long", path);
    case ENOTEMPTY:
      return ResultNotEmpty("'%s' is not empty", path);
    default:
      return ResultError("unknown IO error, %d", error);
  }
}

}  // namespace FileResults
}  // namespace Corvane::Mox
