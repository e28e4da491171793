#include "System/Text/CharacterSetEncoding.h"

#include <cerrno>
#include <cwchar>
#include <iconv.h>
#include <vector>

#include "System/Console.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// The code-point side of every converter: glibc's name for its wchar_t form,
// 32-bit code points in native byte order.
constexpr const char* kCodePoints = "WCHAR_T";

const iconv_t kClosed = reinterpret_cast<iconv_t>(-1);

iconv_t Handle(void* h) { return static_cast<iconv_t>(h); }

// Runs one conversion from a fresh shift state into out, growing out when it
// is full. Stops at the first input the converter rejects (invalid or
// unrepresentable), keeping everything converted before it, and finally
// writes the sequence that returns a stateful encoding to its initial state.
template <class Out>
void Convert(iconv_t converter, const char* input, std::size_t inputBytes, std::vector<Out>& out) {
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  if (out.empty()) out.resize(16);  // the converter needs a real output pointer
  auto* in = const_cast<char*>(input);
  std::size_t inLeft = inputBytes;
  std::size_t used = 0;  // bytes of out filled so far
  bool flushing = false;
  for (;;) {
    char* cursor = reinterpret_cast<char*>(out.data()) + used;
    std::size_t outLeft = out.size() * sizeof(Out) - used;
    std::size_t result = flushing ? iconv(converter, nullptr, nullptr, &cursor, &outLeft)
                                  : iconv(converter, &in, &inLeft, &cursor, &outLeft);
    int error = errno;
    used = out.size() * sizeof(Out) - outLeft;
    if (result == static_cast<std::size_t>(-1) && error == E2BIG) {
      out.resize(out.size() * 2 + 16);
      continue;
    }
    // Done, or stopped at rejected input: either way only the flush is left.
    if (flushing) break;
    flushing = true;
  }
  out.resize(used / sizeof(Out));
}

}  // namespace

CCharacterSetEncoding::CCharacterSetEncoding(const char* name)
    : CEncoding(name), toBytes_(kClosed), toCodePoints_(kClosed) {
  if (!name) return;
  toBytes_ = iconv_open(name, kCodePoints);
  toCodePoints_ = iconv_open(kCodePoints, name);
  if (!IsAvailable()) MOX_LOG(Console::Warning, "character set '%s' is not available", name);
}

CCharacterSetEncoding::~CCharacterSetEncoding() {
  if (Handle(toBytes_) != kClosed) iconv_close(Handle(toBytes_));
  if (Handle(toCodePoints_) != kClosed) iconv_close(Handle(toCodePoints_));
}

bool CCharacterSetEncoding::IsAvailable() const {
  return Handle(toBytes_) != kClosed && Handle(toCodePoints_) != kClosed;
}

namespace {

// Four bytes per character suffice for nearly every character set; the
// conversion grows the buffer for the rest (BOMs, escape sequences).
std::vector<unsigned char> EncodeWith(iconv_t converter, const wchar_t* text) {
  std::size_t n = text ? std::wcslen(text) : 0;
  std::vector<unsigned char> bytes(4 * n);
  Convert(converter, reinterpret_cast<const char*>(text ? text : L""), n * sizeof(wchar_t), bytes);
  return bytes;
}

// One code point per input byte, plus room for the terminator.
std::vector<wchar_t> DecodeWith(iconv_t converter, const unsigned char* bytes, int count) {
  std::size_t n = bytes && count > 0 ? static_cast<std::size_t>(count) : 0;
  std::vector<wchar_t> text(n + 1);
  Convert(converter, reinterpret_cast<const char*>(bytes), n, text);
  return text;
}

}  // namespace

int CCharacterSetEncoding::GetByteCount(const wchar_t* text) const {
  if (!IsAvailable()) return -1;
  CAutoLock lock(this);
  return static_cast<int>(EncodeWith(Handle(toBytes_), text).size());
}

CByteArray* CCharacterSetEncoding::GetBytes(const wchar_t* text) const {
  if (!IsAvailable()) return nullptr;
  CAutoLock lock(this);
  std::vector<unsigned char> bytes = EncodeWith(Handle(toBytes_), text);
  return NewByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

int CCharacterSetEncoding::GetCharCount(const unsigned char* bytes, int count) const {
  if (!IsAvailable()) return -1;
  CAutoLock lock(this);
  return static_cast<int>(DecodeWith(Handle(toCodePoints_), bytes, count).size());
}

CString* CCharacterSetEncoding::GetString(const unsigned char* bytes, int count) const {
  if (!IsAvailable()) return nullptr;
  CAutoLock lock(this);
  std::vector<wchar_t> text = DecodeWith(Handle(toCodePoints_), bytes, count);
  return new CString(text.data(), static_cast<int>(text.size()));
}

}  // namespace Corvane::Mox
