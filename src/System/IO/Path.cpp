#include "System/IO/Path.h"

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

constexpr int TempNameAttempts = 1000;
constexpr int RandomNameLength = 8;

bool IsSeparator(char c) { return c == '/' || c == '\\'; }
// Characters that end the name part of a path when scanning backwards.
bool IsNameBoundary(char c) { return IsSeparator(c) || c == ':'; }

// Position of the dot that starts the extension of the last name, npos when
// there is none (or only a trailing dot).
std::size_t ExtensionStart(const std::string& path) {
  for (std::size_t i = path.size(); i-- > 0;) {
    if (path[i] == '.') return i + 1 == path.size() ? std::string::npos : i;
    if (IsNameBoundary(path[i])) return std::string::npos;
  }
  return std::string::npos;
}

std::size_t NameStart(const std::string& path) {
  std::size_t i = path.size();
  while (i > 0 && !IsNameBoundary(path[i - 1])) --i;
  return i;
}

CString* NewString(const std::string& text) { return new CString(text.c_str(), static_cast<int>(text.size())); }

std::string WithDot(const char* extension) {
  std::string text;
  if (extension[0] != '.') text.push_back('.');
  text.append(extension);
  return text;
}

bool PathExists(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

}  // namespace

const char* CPath::GetInvalidFileNameChars() { return ""; }
const wchar_t* CPath::GetInvalidFileNameWChars() { return L""; }
bool CPath::IsValidFileName(const char* name) { return name != nullptr; }
bool CPath::IsValidFileName(CString* name) { return name != nullptr; }
const char* CPath::GetInvalidPathChars() { return ":"; }
const wchar_t* CPath::GetInvalidPathWChars() { return L":"; }

bool CPath::IsValidPath(const char* path) {
  if (!path) return false;
  return std::string(path).find_first_of(GetInvalidPathChars()) == std::string::npos;
}

bool CPath::IsValidPath(CString* path) { return path && IsValidPath(path->GetChars()); }

bool CPath::IsPathRooted(CString* path) {
  if (!path) return false;
  const char* text = path->GetChars();
  return IsSeparator(text[0]) || (text[0] != 0 && text[1] == ':');
}

bool CPath::IsUncPath(CString* path) {
  if (!path) return false;
  const char* text = path->GetChars();
  return IsSeparator(text[0]) && IsSeparator(text[1]);
}

CString* CPath::GetRandomFileName() {
  char name[RandomNameLength + 1] = {};
  for (int i = 0; i < RandomNameLength; ++i) name[i] = RandomFileNameChars[std::rand() & 63];
  return new CString(name);
}

CString* CPath::GetFileName(CString* path) {
  if (!path) return nullptr;
  std::string text = path->GetChars();
  return NewString(text.substr(NameStart(text)));
}

CString* CPath::GetFileNameWithoutExtension(CString* path) {
  if (!path) return nullptr;
  std::string text = path->GetChars();
  std::string name = text.substr(NameStart(text));
  return NewString(name.substr(0, ExtensionStart(name)));
}

CString* CPath::GetDirectoryName(CString* path) {
  if (!path) return nullptr;
  std::string text = path->GetChars();
  // The root (a drive prefix and the separators after it) is not a directory name.
  std::size_t drive = text.rfind(':');
  std::size_t start = drive == std::string::npos ? 0 : drive + 1;
  while (start < text.size() && IsSeparator(text[start])) ++start;
  if (start == text.size()) return nullptr;
  std::size_t last = text.find_last_of("/\\");
  if (last == std::string::npos || last < start) return nullptr;
  return NewString(text.substr(0, last));
}

CString* CPath::Combine(const char* a, const char* b) {
  if (!a || !b) return nullptr;
  RObject<CString> first(new CString(a));
  RObject<CString> second(new CString(b));
  return Combine(first, second, '/');
}

CString* CPath::Combine(CString* a, CString* b, char separator) {
  if (!a || !b) return nullptr;
  std::string left = a->GetChars();
  std::string right = b->GetChars();
  bool insert = !left.empty() && !right.empty() && !IsNameBoundary(left.back()) && !IsSeparator(right.front());
  std::string joined = insert ? left + separator + right : left + right;
  RObject<CString> result(NewString(joined));
  if (result->GetLength() >= MaxPathLength) return nullptr;
  return result.Detach();
}

bool CPath::HasExtension(CString* path) {
  return path && ExtensionStart(path->GetChars()) != std::string::npos;
}

CString* CPath::GetExtension(CString* path) {
  if (!path) return nullptr;
  std::string text = path->GetChars();
  std::size_t start = ExtensionStart(text);
  return start == std::string::npos ? nullptr : NewString(text.substr(start));
}

CString* CPath::AddExtension(CString* path, const char* extension) {
  if (!path) return nullptr;
  std::string text = path->GetChars();
  return NewString(extension ? text + WithDot(extension) : text);
}

CString* CPath::AddExtension(CString* path, CString* extension) {
  return AddExtension(path, extension ? extension->GetChars() : nullptr);
}

CString* CPath::ChangeExtension(CString* path, const char* extension) {
  if (!path) return nullptr;
  std::string text = path->GetChars();
  std::size_t start = ExtensionStart(text);
  if (start != std::string::npos) text.erase(start);
  return NewString(extension ? text + WithDot(extension) : text);
}

CString* CPath::ChangeExtension(CString* path, CString* extension) {
  return ChangeExtension(path, extension ? extension->GetChars() : nullptr);
}

CString* CPath::GetTempDirectory() {
  const char* directory = std::getenv("TMPDIR");
  return directory ? new CString(directory) : nullptr;
}

CString* CPath::GetTempFilePath(const char* directory, const char* prefix) {
  if (!directory || !prefix) return nullptr;
  for (int attempt = 0; attempt < TempNameAttempts; ++attempt) {
    char suffix[16];
    std::snprintf(suffix, sizeof suffix, "_%06x", static_cast<unsigned int>(std::rand()) & 0xFFFFFFu);
    std::string candidate = std::string(directory) + '/' + prefix + suffix;
    if (!PathExists(candidate)) return NewString(candidate);
  }
  return nullptr;
}

CString* CPath::GetTempFilePath(CString* directory, const char* prefix) {
  return directory ? GetTempFilePath(directory->GetChars(), prefix) : nullptr;
}

CString* CPath::GetTempFilePath(const char* directory, CString* prefix) {
  return prefix ? GetTempFilePath(directory, prefix->GetChars()) : nullptr;
}

CString* CPath::GetTempFilePath(CString* directory, CString* prefix) {
  return directory && prefix ? GetTempFilePath(directory->GetChars(), prefix->GetChars()) : nullptr;
}

}  // namespace Corvane::Mox
