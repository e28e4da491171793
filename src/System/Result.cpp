#include "System/Result.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "System/Diagnostics/StackTrace.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

char* DuplicateText(const char* text) {
  if (!text) return nullptr;
  std::size_t n = std::strlen(text) + 1;
  char* copy = static_cast<char*>(std::malloc(n));
  if (!copy) throw std::bad_alloc();
  std::memcpy(copy, text, n);
  return copy;
}

}  // namespace

Result::Result(int code, const char* message) : Result(static_cast<unsigned int>(code), code, message, nullptr) {}

Result::Result(int code, const char* message, const Result& inner)
    : Result(static_cast<unsigned int>(code), code, message, &inner) {}

Result::Result(unsigned int type, int code, const char* message) : Result(type, code, message, nullptr) {}

Result::Result(unsigned int type, int code, const char* message, const Result& inner)
    : Result(type, code, message, &inner) {}

Result::Result(unsigned int type, int code, const char* message, const Result* inner)
    : type_(type),
      code_(code),
      inner_(inner ? new Result(*inner) : nullptr),
      message_(message),
      details_(nullptr),
      stackTrace_(nullptr) {
  CaptureStackIfFailed();
}

void Result::CaptureStackIfFailed() {
  // Raw addresses only; symbolication waits until the trace is printed.
  if (type_ >= 2) stackTrace_ = new CStackTrace(1);
}

void Result::FormatDetails(const char* format, va_list args) {
  std::free(details_);
  details_ = nullptr;
  if (!format) return;
  va_list measure;
  va_copy(measure, args);
  int n = std::vsnprintf(nullptr, 0, format, measure);
  va_end(measure);
  if (n < 0) return;
  details_ = static_cast<char*>(std::malloc(static_cast<std::size_t>(n) + 1));
  if (!details_) throw std::bad_alloc();
  std::vsnprintf(details_, static_cast<std::size_t>(n) + 1, format, args);
}

void Result::CopyFrom(const Result& other) {
  type_ = other.type_;
  code_ = other.code_;
  message_ = other.message_;
  inner_ = other.inner_ ? new Result(*other.inner_) : nullptr;
  details_ = DuplicateText(other.details_);
  stackTrace_ = other.stackTrace_;
  if (stackTrace_) stackTrace_->Acquire();
}

void Result::Reset() noexcept {
  delete inner_;
  inner_ = nullptr;
  std::free(details_);
  details_ = nullptr;
  if (stackTrace_) stackTrace_->Release();
  stackTrace_ = nullptr;
}

Result::Result(const Result& other) : inner_(nullptr), details_(nullptr), stackTrace_(nullptr) { CopyFrom(other); }

Result::Result(Result&& other) noexcept
    : type_(other.type_),
      code_(other.code_),
      inner_(other.inner_),
      message_(other.message_),
      details_(other.details_),
      stackTrace_(other.stackTrace_) {
  other.inner_ = nullptr;
  other.details_ = nullptr;
  other.stackTrace_ = nullptr;
}

Result& Result::operator=(const Result& other) {
  if (this != &other) {
    Result copy(other);
    *this = std::move(copy);
  }
  return *this;
}

Result& Result::operator=(Result&& other) noexcept {
  if (this != &other) {
    Reset();
    type_ = other.type_;
    code_ = other.code_;
    message_ = other.message_;
    inner_ = other.inner_;
    details_ = other.details_;
    stackTrace_ = other.stackTrace_;
    other.inner_ = nullptr;
    other.details_ = nullptr;
    other.stackTrace_ = nullptr;
  }
  return *this;
}

CStackTrace* Result::GetStackTrace() const {
  if (stackTrace_) stackTrace_->Acquire();
  return stackTrace_;
}

CString* Result::FormatErrorMessage() const {
  return CString::WithFormat("%s (%d) : %s", type_ < 2 ? "SUCCEEDED" : "FAILED", static_cast<int>(type_),
                             message_ ? message_ : "");
}

CString* Result::ToString(int flags) const {
  std::string text;
  if (flags & 0x1) {
    RObject<CString> formatted(FormatErrorMessage());
    text = formatted->GetChars();
    if (static_cast<int>(type_) != code_) {
      text += " (" + std::to_string(code_) + ")";
    }
  }
  if ((flags & 0x2) && details_) {
    if (!text.empty()) text += ", ";
    text += details_;
  }
  if ((flags & 0x4) && stackTrace_) {
    RObject<CString> trace(stackTrace_->Symbolicate());
    if (!text.empty()) text += " @\n";
    text += trace->GetChars();
  }
  if (flags & 0x8) {
    // Each inner result prints its own inner chain as well, so deeper results
    // repeat; readers of these logs rely on that shape.
    for (const Result* inner = inner_; inner; inner = inner->inner_) {
      if (!text.empty()) text += "\n";
      text += "Inner Result:\n";
      RObject<CString> innerText(inner->ToString(flags));
      text += innerText->GetChars();
    }
  }
  return new CString(text.c_str());
}

// Constructor bodies of the standard kinds.
#define MOX_RESULT_CONSTRUCTORS(Name, Type, Message, InnerMessage)                                      \
  Name::Name() : Name(static_cast<unsigned int>(Type), Type, Message, nullptr) {}                        \
  Name::Name(const char* format, ...) : Name(static_cast<unsigned int>(Type), Type, Message, nullptr) {  \
    va_list args;                                                                                        \
    va_start(args, format);                                                                              \
    FormatDetails(format, args);                                                                         \
    va_end(args);                                                                                        \
  }                                                                                                      \
  Name::Name(const Result& inner, const char* format, ...)                                               \
      : Name(static_cast<unsigned int>(Type), Type, InnerMessage, &inner) {                              \
    va_list args;                                                                                        \
    va_start(args, format);                                                                              \
    FormatDetails(format, args);                                                                         \
    va_end(args);                                                                                        \
  }

#define MOX_RESULT_KIND(Name, Base, Type, Message) MOX_RESULT_CONSTRUCTORS(Name, Type, Message, Message)
#include "System/ResultKinds.def"
#undef MOX_RESULT_KIND

MOX_RESULT_CONSTRUCTORS(ResultInvalidArgument, -19021, "Invalid argument", "Invalid argument")
MOX_RESULT_CONSTRUCTORS(ResultIOError, -19100, "IO error", "IO error")
MOX_RESULT_CONSTRUCTORS(ResultApplicationError, -19022, "Application error", "Application error")
MOX_RESULT_CONSTRUCTORS(ResultExternalError, -19023, "External error", "External error")
MOX_RESULT_CONSTRUCTORS(ResultNotAccepting, -19811, "Not Accepting", "Not accepting")

#define MOX_RESULT_CODED_CONSTRUCTORS(Name, Type, Message)                                          \
  Name::Name(int code, const char* format, ...)                                                     \
      : Name(static_cast<unsigned int>(Type), code, Message, nullptr) {                             \
    va_list args;                                                                                   \
    va_start(args, format);                                                                         \
    FormatDetails(format, args);                                                                    \
    va_end(args);                                                                                   \
  }                                                                                                 \
  Name::Name(int code, const Result& inner, const char* format, ...)                                \
      : Name(static_cast<unsigned int>(Type), code, Message, &inner) {                              \
    va_list args;                                                                                   \
    va_start(args, format);                                                                         \
    FormatDetails(format, args);                                                                    \
    va_end(args);                                                                                   \
  }

MOX_RESULT_CODED_CONSTRUCTORS(ResultApplicationError, -19022, "Application error")
MOX_RESULT_CODED_CONSTRUCTORS(ResultExternalError, -19023, "External error")

}  // namespace Corvane::Mox
