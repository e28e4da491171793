#include "System/Diagnostics/StackTrace.h"

#include <cxxabi.h>
#include <execinfo.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// Finds the mangled symbol in a glibc symbol line "module(symbol+0x1f) [0x...]".
bool ExtractSymbol(const char* line, std::string& symbol) {
  const char* open = std::strchr(line, '(');
  if (!open) return false;
  const char* plus = std::strchr(open, '+');
  if (!plus || plus == open + 1) return false;
  symbol.assign(open + 1, plus);
  return true;
}

}  // namespace

CStackTrace::CStackTrace(int skip) : CObject(FourCC("stkr")), count_(0), frames_(nullptr) {
  void* buffer[MaximumFrames];
  int captured = backtrace(buffer, MaximumFrames);
  int drop = std::max(skip, 0) + 1;
  count_ = std::max(captured - drop, 0);
  if (count_ > 0) {
    frames_ = new void*[count_];
    std::copy(buffer + drop, buffer + captured, frames_);
  }
}

CStackTrace::~CStackTrace() { delete[] frames_; }

CString* CStackTrace::Symbolicate() {
  if (count_ == 0) return new CString();
  char** lines = backtrace_symbols(frames_, count_);
  if (!lines) return new CString();
  std::string text;
  std::string symbol;
  for (int i = 0; i < count_; ++i) {
    if (!ExtractSymbol(lines[i], symbol)) continue;
    int status = 0;
    char* demangled = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
    if (status == 0 && demangled) {
      text += demangled;
      text += '\n';
    }
    std::free(demangled);
  }
  std::free(lines);
  return new CString(text.c_str());
}

}  // namespace Corvane::Mox
