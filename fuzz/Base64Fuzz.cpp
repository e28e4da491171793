// Arbitrary bytes through Base64: encoding then decoding must give them back
// for both alphabets with and without line breaks, and arbitrary text must
// decode to exactly the announced length.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "System/ByteArray.h"
#include "System/IO/Base64Decoder.h"
#include "System/IO/Base64Encoder.h"
#include "System/Text.h"

using namespace Corvane::Mox;

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

void RoundTrip(const std::uint8_t* data, int size, const char* separator, const char* alphabet) {
  RObject<CString> text(CBase64Encoder::Encode(data, size, separator, alphabet));
  Check(text);
  std::size_t length = std::strlen(text->GetChars());
  std::size_t lines = static_cast<std::size_t>(size) / CBase64Encoder::LineBytes;
  Check(length == (static_cast<std::size_t>(size) + 2) / 3 * 4 + lines * std::strlen(separator));
  RObject<CByteArray> back(CBase64Decoder::Decode(text, alphabet));
  Check(back && back->GetLength() == size);
  Check(size == 0 || std::memcmp(back->GetData(), data, static_cast<std::size_t>(size)) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  int n = static_cast<int>(size);
  RoundTrip(data, n, "", CBase64Encoder::Standard);
  RoundTrip(data, n, "\n", CBase64Encoder::WMRM);
  RoundTrip(data, n, "\r\n", CBase64Encoder::Standard);

  // The input as text: reading byte by byte and in one go must agree.
  std::string text(reinterpret_cast<const char*>(data), size);
  RObject<CBase64Decoder> whole(new CBase64Decoder(text.c_str(), nullptr));
  RObject<CBase64Decoder> single(new CBase64Decoder(text.c_str(), nullptr));
  long long length = whole->GetLength();
  std::string all(static_cast<std::size_t>(length) + 1, '\0');
  int read = 0;
  Check(whole->Read(reinterpret_cast<unsigned char*>(all.data()), static_cast<int>(all.size()), &read).Succeeded());
  Check(read == length);
  for (int i = 0; i < read; ++i) Check(single->ReadByte() == static_cast<unsigned char>(all[static_cast<std::size_t>(i)]));
  Check(single->ReadByte() == -1);
  return 0;
}
