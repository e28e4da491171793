#pragma once
// Result: the outcome of every fallible operation, and the library's exception
// type. A failure carries its kind, a code, a fixed message, optional formatted
// details, an optional inner (causing) result and the call stack at creation.

#include <cstdarg>

namespace Corvane::Mox {

class CString;
class CStackTrace;

#define MOX_PRINTF(fmt, args) __attribute__((format(printf, fmt, args)))

class Result {
 public:
  Result() noexcept : type_(0), code_(0), inner_(nullptr), message_("Result OK"), details_(nullptr), stackTrace_(nullptr) {}
  Result(int code, const char* message);
  Result(int code, const char* message, const Result& inner);
  Result(unsigned int type, int code, const char* message);
  Result(unsigned int type, int code, const char* message, const Result& inner);

  Result(const Result& other);
  Result(Result&& other) noexcept;
  Result& operator=(const Result& other);
  Result& operator=(Result&& other) noexcept;
  // Successes own nothing, so the common case costs one test.
  virtual ~Result() {
    if (inner_ || details_ || stackTrace_) Reset();
  }

  static bool Failed(int code) { return static_cast<unsigned int>(code) > 1; }
  static bool Succeeded(int code) { return static_cast<unsigned int>(code) < 2; }
  bool Failed() const { return type_ > 1; }
  bool Succeeded() const { return type_ < 2; }

  unsigned int GetType() const { return type_; }
  int GetResultCode() const { return code_; }
  operator int() const { return code_; }  // NOLINT: results compare as codes
  const Result* GetInnerResult() const { return inner_; }
  const char* GetErrorMessage() const { return message_; }
  const char* GetDetails() const { return details_; }
  CStackTrace* GetStackTrace() const;  // acquired reference, or null

  // "SUCCEEDED|FAILED (type) : message" as a new string.
  virtual CString* FormatErrorMessage() const;
  // Flags: 0x1 message, 0x2 details, 0x4 stack trace, 0x8 inner chain.
  CString* ToString(int flags) const;

  // Throws this result (as its base class Result) when it is a failure.
  void ThrowIfFailed() const {
    if (Failed()) throw *this;
  }

 protected:
  // Common constructor of every kind; inner may be null.
  Result(unsigned int type, int code, const char* message, const Result* inner);
  // Formats the details with printf rules; a null format leaves them null.
  void FormatDetails(const char* format, va_list args);

 private:
  void CaptureStackIfFailed();
  void CopyFrom(const Result& other);
  void Reset() noexcept;

  unsigned int type_;
  int code_;
  Result* inner_;
  const char* message_;
  char* details_;
  CStackTrace* stackTrace_;
};

// Success kinds: never capture a stack trace.
class ResultOK : public Result {
 public:
  ResultOK() noexcept = default;
};

class ResultFalse : public Result {
 public:
  ResultFalse() noexcept : Result(1u, 1, "Result false") {}
};

// Declares a kind with the standard constructor shapes. Kinds that act as a
// base for others also expose the protected forwarding constructor.
#define MOX_RESULT_KIND_BODY(Name, Base)                                                   \
 public:                                                                                   \
  Name();                                                                                  \
  explicit Name(const char* format, ...) MOX_PRINTF(2, 3);                                 \
  Name(const Result& inner, const char* format, ...) MOX_PRINTF(3, 4);                     \
                                                                                           \
 protected:                                                                                \
  Name(unsigned int type, int code, const char* message, const Result* inner)              \
      : Base(type, code, message, inner) {}

class ResultInvalidArgument : public Result {
  MOX_RESULT_KIND_BODY(ResultInvalidArgument, Result)
 public:
  // The given text replaces the fixed message; it must outlive the result.
  ResultInvalidArgument(int code, const char* message) : Result(code, message) {}
  ResultInvalidArgument(int code, const char* message, const Result& inner) : Result(code, message, inner) {}
};

class ResultIOError : public Result {
  MOX_RESULT_KIND_BODY(ResultIOError, Result)
 public:
  ResultIOError(int code, const char* message) : Result(code, message) {}
  ResultIOError(int code, const char* message, const Result& inner) : Result(code, message, inner) {}
};

class ResultApplicationError : public Result {
  MOX_RESULT_KIND_BODY(ResultApplicationError, Result)
 public:
  ResultApplicationError(int code, const char* format, ...) MOX_PRINTF(3, 4);
  ResultApplicationError(int code, const Result& inner, const char* format, ...) MOX_PRINTF(4, 5);
};

class ResultExternalError : public Result {
  MOX_RESULT_KIND_BODY(ResultExternalError, Result)
 public:
  ResultExternalError(int code, const char* format, ...) MOX_PRINTF(3, 4);
  ResultExternalError(int code, const Result& inner, const char* format, ...) MOX_PRINTF(4, 5);
};

// The plain form reads "Not Accepting", the form with an inner result "Not accepting".
class ResultNotAccepting : public Result {
  MOX_RESULT_KIND_BODY(ResultNotAccepting, Result)
};

#define MOX_RESULT_KIND(Name, Base, Type, Message) \
  class Name : public Base {                       \
    MOX_RESULT_KIND_BODY(Name, Base)               \
  };
#include "System/ResultKinds.def"
#undef MOX_RESULT_KIND

}  // namespace Corvane::Mox
