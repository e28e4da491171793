#include "System/IO/Directory.h"

#include <dirent.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "System/Collections/List.h"
#include "System/Console.h"
#include "System/IO/File.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// Open descriptors the tree walk of a recursive delete may use.
constexpr int TreeWalkDescriptors = 16;

// The log text and result of a failed folder creation.
Result CreateFailure(int error, const char* path, char* text, std::size_t size) {
  switch (error) {
    case ENOENT:
      std::snprintf(text, size, "RESULT_PATH_DOES_NOT_EXIST");
      return ResultPathDoesNotExist("'%s' does not exist", path);
    case EACCES:
      std::snprintf(text, size, "RESULT_ACCESS_DENIED");
      return ResultAccessDenied("access to '%s' is denied", path);
    case ENOTDIR:
      std::snprintf(text, size, "RESULT_PATH_IS_NOT_DIRECTORY");
      return ResultIOError("'%s' is not a directory", path);
    case EROFS:
      std::snprintf(text, size, "RESULT_READ_ONLY (EROFS)");
      return ResultReadOnly("'%s' is read only", path);
    case ENAMETOOLONG:
      std::snprintf(text, size, "RESULT_PATH_NAME_TOO_LONG");
      return ResultPathNameTooLong("'%s' is too long", path);
    default:
      std::snprintf(text, size, "Unknown error: %d", error);
      return ResultError("unknown IO error, %d", error);
  }
}

int RemoveEntry(const char* path, const struct stat*, int, struct FTW*) {
  return remove(path) == 0 ? 0 : errno;
}

bool IsDirectory(const std::string& path, bool followLinks) {
  struct stat status {};
  int rc = followLinks ? stat(path.c_str(), &status) : lstat(path.c_str(), &status);
  return rc == 0 && S_ISDIR(status.st_mode);
}

// Whether an entry belongs in a listing of files or of folders.
bool Wanted(const std::string& folder, const dirent* entry, bool directories) {
  std::string full = folder + '/' + entry->d_name;
  unsigned char type = entry->d_type;
  if (type == DT_UNKNOWN) {
    // Some file systems do not report types while listing.
    struct stat status {};
    if (lstat(full.c_str(), &status) != 0) return false;
    type = S_ISDIR(status.st_mode) ? DT_DIR : S_ISLNK(status.st_mode) ? DT_LNK : S_ISREG(status.st_mode) ? DT_REG : 0;
  }
  if (directories) return type == DT_DIR;
  return type == DT_REG || (type == DT_LNK && CFile::Exists(full.c_str()));
}

}  // namespace

bool CDirectory::Exists(const char* path) { return path && IsDirectory(path, true); }

bool CDirectory::Exists(CString* path) { return path && Exists(path->GetChars()); }

Result CDirectory::Create(CString* path) { return CreateDirectory(path); }

bool CDirectory::CreateLevel(const char* path) {
  struct stat status {};
  if (stat(path, &status) == 0) {
    if (S_ISDIR(status.st_mode)) return true;
    errno = ENOTDIR;
    return false;
  }
  if (errno != ENOENT) return false;
  // Another process may create the same folder between the check and here.
  return mkdir(path, 0777) == 0 || (errno == EEXIST && IsDirectory(path, true));
}

Result CDirectory::CreateDirectory(CString* path) {
  if (!path) return ResultArgumentNull();
  std::string full = path->GetChars();
  while (full.size() > 1 && full.back() == '/') full.pop_back();
  // Every parent first, then the folder itself; a leading "/" is no level.
  for (std::size_t end = full.find('/', 1);; end = full.find('/', end + 1)) {
    std::string level = full.substr(0, end);
    if (!level.empty() && level.back() == '/') continue;  // doubled separators
    if (!CreateLevel(level.c_str())) {
      char text[64];
      Result failure = CreateFailure(errno, level.c_str(), text, sizeof text);
      MOX_LOG(Console::Error, "%s", text);
      return failure;
    }
    if (end == std::string::npos) return ResultOK();
  }
}

Result CDirectory::Delete(const char* path, bool recursive) {
  if (!path || !*path) return ResultNullPointer();
  if (!recursive) return remove(path) == 0 ? ResultOK() : FileResults::FromErrno(errno, path);
  int rc = nftw(path, &RemoveEntry, TreeWalkDescriptors, FTW_DEPTH | FTW_PHYS);
  if (rc == 0) return ResultOK();
  return FileResults::FromErrno(rc > 0 ? rc : errno, path);
}

Result CDirectory::Delete(CString* path, bool recursive) { return Delete(path ? path->GetChars() : nullptr, recursive); }

Result CDirectory::GetCurrentDirectory(CString*& path) {
  path = nullptr;
  char* current = getcwd(nullptr, 0);
  if (!current) return ResultIOError("cannot read the current directory, %d", errno);
  path = new CString(current);
  std::free(current);
  return ResultOK();
}

Result CDirectory::GetFiles(CString* path, CList<CString>*& list) { return ListEntries(path, list, false); }

Result CDirectory::GetDirectories(CString* path, CList<CString>*& list) { return ListEntries(path, list, true); }

Result CDirectory::ListEntries(CString* path, CList<CString>*& list, bool directories) {
  if (!path) return ResultArgumentNull();
  list = new CList<CString>();
  DIR* folder = opendir(path->GetChars());
  if (!folder) return ResultArgumentOutOfRange("cannot open '%s', %d", path->GetChars(), errno);
  Result result;
  while (const dirent* entry = readdir(folder)) {
    if (entry->d_name[0] == '.' || !Wanted(path->GetChars(), entry, directories)) continue;
    RObject<CString> name(new CString(entry->d_name));
    result = list->Add(name);
    if (result.Failed()) break;
  }
  closedir(folder);
  return result;
}

}  // namespace Corvane::Mox
