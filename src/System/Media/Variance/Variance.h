#pragma once
// CVariance ("vrnc"): how an input departs from its format, with a severity.
// Readers of damaged files record variances instead of stopping: each
// thread keeps its own list (so readers indexing on different threads never
// mix their findings) until a reader synchronises it into the container's
// "vrcp" extension.

#include "System/Object.h"

namespace Corvane::Mox {

class CProperties;
class CString;
class CVarianceProperties;

class CVariance : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("vrnc");

  enum Severity : int {
    Trivial = 0,
    Minor = 1,
    Major = 2,
    Fatal = 3,
  };

  CVariance(CString* message, Severity severity);
  ~CVariance() override;

  CString* GetMessage() const { return message_; }  // not acquired; may be null
  Severity GetSeverity() const { return severity_; }
  // "trivial", "minor", "major", "fatal"; null for other values.
  static const char* GetSeverityName(int severity);

  // "message" (when set) and "severity", described by its name.
  virtual Result GetProperties(CProperties* bag) const;

  // Record on the calling thread; the message is formatted printf-style and
  // trimmed of trailing white space. Never fails visibly.
  static void Report(Severity severity, const char* format, ...) MOX_PRINTF(2, 3);
  static void Report(long long position, Severity severity, const char* format, ...) MOX_PRINTF(3, 4);
  static bool IsEmpty();
  static void Clear();
  // Appends the calling thread's variances to target and empties the list.
  static void Synchronize(CVarianceProperties* target);

 protected:
  CVariance(unsigned int type, CString* message, Severity severity);
  // Adds a variance to the calling thread's list (acquiring it).
  static void Record(CVariance* variance);

 private:
  CString* message_;
  Severity severity_;
};

}  // namespace Corvane::Mox
