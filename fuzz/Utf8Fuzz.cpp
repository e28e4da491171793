// Arbitrary bytes as UTF-8: construction must stop cleanly at the first
// invalid sequence, and the two cached forms must agree.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "System/Text.h"

using namespace Corvane::Mox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  RObject<CString> text(new CString(bytes.data(), static_cast<int>(size)));
  const wchar_t* wide = text->GetWChars();
  if (static_cast<int>(std::wcslen(wide)) != text->GetLength()) std::abort();
  RObject<CString> back(new CString(wide));
  if (std::strcmp(back->GetChars(), text->GetChars()) != 0) std::abort();
  if (back->GetHashCode() != text->GetHashCode()) std::abort();
  // The valid prefix is a prefix of the input.
  if (bytes.compare(0, std::strlen(text->GetChars()), text->GetChars()) != 0) std::abort();
  return 0;
}
