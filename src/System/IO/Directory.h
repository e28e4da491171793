#pragma once
// CDirectory: static operations on folders named by path.

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CList;

class CDirectory {
 public:
  // True when the path names a folder (links are followed).
  static bool Exists(const char* path);
  static bool Exists(CString* path);
  // Both create the folder together with any missing parents; a folder that
  // already exists is success. Failures are logged at level 1.
  static Result Create(CString* path);
  static Result CreateDirectory(CString* path);
  // Removes a file or an empty folder, or with recursive a folder and all it
  // holds. A null or empty path gives ResultNullPointer; other failures are
  // mapped by FileResults::FromErrno.
  static Result Delete(const char* path, bool recursive);
  static Result Delete(CString* path, bool recursive);
  static Result GetCurrentDirectory(CString*& path);
  // The bare names of the regular files (and of links to files) in path, in
  // the order the platform lists them; names starting with "." are skipped.
  // Every call with a path hands over a new list, even when the folder cannot
  // be read (then with ResultArgumentOutOfRange).
  static Result GetFiles(CString* path, CList<CString>*& list);
  // The same for the folders in path (links to folders are not listed).
  static Result GetDirectories(CString* path, CList<CString>*& list);

 private:
  // Makes one folder unless it exists; false with errno set on failure.
  static bool CreateLevel(const char* path);
  static Result ListEntries(CString* path, CList<CString>*& list, bool directories);
};

}  // namespace Corvane::Mox
