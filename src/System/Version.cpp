#include "System/Version.h"

#include <cctype>
#include <climits>
#include <cstdio>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// One or more decimal digits that fit an int.
bool ReadNumber(const char*& p, int& value) {
  if (!std::isdigit(static_cast<unsigned char>(*p))) return false;
  long long number = 0;
  for (; std::isdigit(static_cast<unsigned char>(*p)); ++p) {
    number = number * 10 + (*p - '0');
    if (number > INT_MAX) return false;
  }
  value = static_cast<int>(number);
  return true;
}

bool AtEnd(const char* p) { return *p == 0; }

// The four numbers of text; false when it is not a version.
bool ReadVersion(const char* p, int numbers[4]) {
  numbers[2] = numbers[3] = -1;
  if (!ReadNumber(p, numbers[0]) || *p++ != '.' || !ReadNumber(p, numbers[1])) return false;
  if (AtEnd(p)) return true;
  if (*p++ != '.' || !ReadNumber(p, numbers[2])) return false;
  if (AtEnd(p)) return true;
  if (*p++ != '.' || !ReadNumber(p, numbers[3])) return false;
  while (std::isspace(static_cast<unsigned char>(*p))) ++p;
  return AtEnd(p);
}

}  // namespace

CVersion::CVersion(int major, int minor) : CObject(TypeCode), major_(major), minor_(minor), build_(-1), revision_(-1) {}

Result CVersion::Parse(const char* text) {
  if (!text) return ResultArgumentNull();
  int numbers[4];
  if (!ReadVersion(text, numbers)) return ResultError("CVersion::Parse: '%s' is not a version", text);
  major_ = numbers[0];
  minor_ = numbers[1];
  build_ = numbers[2];
  revision_ = numbers[3];
  return ResultOK();
}

Result CVersion::Parse(const char* text, CVersion*& version) {
  version = nullptr;
  RObject<CVersion> parsed(new CVersion(0, 0));
  Result result = parsed->Parse(text);
  if (result.Failed()) return result;
  version = parsed.Detach();
  return result;
}

Result CVersion::Parse(CString* text, CVersion*& version) {
  if (!text) {
    version = nullptr;
    return ResultArgumentNull();
  }
  return Parse(text->GetChars(), version);
}

char* CVersion::ToString(char* buffer) const {
  int n = std::snprintf(buffer, MaxStringLength, "%d.%d", major_, minor_);
  if (build_ >= 0) {
    n += std::snprintf(buffer + n, MaxStringLength - n, ".%d", build_);
    if (revision_ >= 0) std::snprintf(buffer + n, MaxStringLength - n, ".%d", revision_);
  }
  return buffer;
}

CString* CVersion::ToString() const {
  char buffer[MaxStringLength];
  return new CString(ToString(buffer));
}

}  // namespace Corvane::Mox
