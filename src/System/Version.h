#pragma once
// CVersion: a dotted version number "major.minor[.build[.revision]]"; build
// and revision are -1 when absent.

#include "System/Object.h"

namespace Corvane::Mox {

class CVersion : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("vers");
  // Bytes a buffer passed to ToString(char*) must hold.
  static constexpr int MaxStringLength = 48;

  CVersion(int major, int minor);

  // Replaces the numbers with those of text; ResultError (and no change) when
  // it is not "major.minor", "major.minor.build" or
  // "major.minor.build.revision" (white space may follow the revision only).
  Result Parse(const char* text);
  // A new version read from text, or null with the failure.
  static Result Parse(const char* text, CVersion*& version);
  static Result Parse(CString* text, CVersion*& version);

  int GetMajor() const { return major_; }
  int GetMinor() const { return minor_; }
  int GetBuild() const { return build_; }
  int GetRevision() const { return revision_; }

  // "major.minor", then ".build" when the build is set and, only then,
  // ".revision" when that is set. Returns buffer.
  char* ToString(char* buffer) const;
  // The same text as a new string.
  CString* ToString() const override;

 private:
  int major_;
  int minor_;
  int build_;
  int revision_;
};

}  // namespace Corvane::Mox
