#include "System/IO/Base64Decoder.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#define MOX_BASE64_SSE2 1
#endif

#include "System/ByteArray.h"
#include "System/IO/Base64Alphabet.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// The white space (bytes up to the space character) among count bytes.
std::size_t CountSpaces(const unsigned char* bytes, std::size_t count) {
  std::size_t spaces = 0;
  std::size_t i = 0;
#if MOX_BASE64_SSE2
  // Sixteen at a time: a byte is space when max(byte, ' ') == ' '. Each lane
  // counts up to 255 matches before the lanes are summed.
  const __m128i space = _mm_set1_epi8(' ');
  const __m128i zero = _mm_setzero_si128();
  __m128i total = zero;
  while (i + 16 <= count) {
    __m128i lanes = zero;
    for (int round = 0; round < 255 && i + 16 <= count; ++round, i += 16) {
      __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
      lanes = _mm_sub_epi8(lanes, _mm_cmpeq_epi8(_mm_max_epu8(chunk, space), space));
    }
    total = _mm_add_epi64(total, _mm_sad_epu8(lanes, zero));
  }
  spaces = static_cast<std::size_t>(_mm_cvtsi128_si64(total)) +
           static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(total, total)));
#endif
  for (; i < count; ++i) spaces += CBase64Alphabet::IsSpace(bytes[i]);
  return spaces;
}

#if MOX_BASE64_SSE2
// Decodes 16 characters of a letters-and-digits alphabet into 12 bytes at
// out, which needs 13 bytes of room. False, with nothing stored, when one of
// them is not in the alphabet (white space, padding, anything else).
bool DecodeSixteen(const unsigned char* in, unsigned char* out, unsigned char c62, unsigned char c63) {
  auto range = [](__m128i c, char first, char last) {
    return _mm_and_si128(_mm_cmpgt_epi8(c, _mm_set1_epi8(static_cast<char>(first - 1))),
                         _mm_cmplt_epi8(c, _mm_set1_epi8(static_cast<char>(last + 1))));
  };
  // Bytes of 128 and above compare as negative and fall in no range.
  __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
  __m128i upper = range(c, 'A', 'Z');
  __m128i lower = range(c, 'a', 'z');
  __m128i digit = range(c, '0', '9');
  __m128i is62 = _mm_cmpeq_epi8(c, _mm_set1_epi8(static_cast<char>(c62)));
  __m128i is63 = _mm_cmpeq_epi8(c, _mm_set1_epi8(static_cast<char>(c63)));
  __m128i valid = _mm_or_si128(_mm_or_si128(_mm_or_si128(upper, lower), digit), _mm_or_si128(is62, is63));
  if (_mm_movemask_epi8(valid) != 0xFFFF) return false;
  // Each class moves by its own offset onto 0..63.
  __m128i offset = _mm_or_si128(
      _mm_or_si128(_mm_and_si128(upper, _mm_set1_epi8(-'A')), _mm_and_si128(lower, _mm_set1_epi8(26 - 'a'))),
      _mm_or_si128(_mm_and_si128(digit, _mm_set1_epi8(52 - '0')),
                   _mm_or_si128(_mm_and_si128(is62, _mm_set1_epi8(static_cast<char>(62 - c62))),
                                _mm_and_si128(is63, _mm_set1_epi8(static_cast<char>(63 - c63))))));
  __m128i values = _mm_add_epi8(c, offset);
  // Pairs of 6-bit values into 12 bits per 16-bit lane, then pairs of those
  // into 24 bits per 32-bit lane, the first character highest.
  __m128i twelve = _mm_or_si128(_mm_slli_epi16(_mm_and_si128(values, _mm_set1_epi16(0x00FF)), 6),
                                _mm_srli_epi16(values, 8));
  __m128i groups = _mm_or_si128(_mm_slli_epi32(_mm_and_si128(twelve, _mm_set1_epi32(0xFFFF)), 12),
                                _mm_srli_epi32(twelve, 16));
  alignas(16) std::uint32_t lanes[4];
  _mm_store_si128(reinterpret_cast<__m128i*>(lanes), groups);
  for (int k = 0; k < 4; ++k) {
    std::uint32_t word = __builtin_bswap32(lanes[k] << 8);
    std::memcpy(out + 3 * k, &word, 4);
  }
  return true;
}
#endif

}  // namespace

CBase64Decoder::CBase64Decoder(const char* text, const char* alphabet)
    : CBase64Decoder(RObject<CString>(new CString(text ? text : "")), alphabet) {}

CBase64Decoder::CBase64Decoder(CString* text, const char* alphabet)
    : CStream(TypeCode), text_(text), chars_(text ? text->GetChars() : ""), size_(0) {
  if (text_) text_->Acquire();
  Start(alphabet);
}

CBase64Decoder::CBase64Decoder(const char* text, const char* alphabet, bool)
    : CStream(TypeCode), text_(nullptr), chars_(text ? text : ""), size_(0) {
  Start(alphabet);
}

CBase64Decoder::~CBase64Decoder() {
  if (text_) text_->Release();
}

void CBase64Decoder::Start(const char* alphabet) {
  alphabet_ = CBase64Alphabet::For(alphabet, ownAlphabet_);
  index_ = 0;
  produced_ = 0;
  carried_ = 0;
  carriedBits_ = 0;
  size_ = std::strlen(chars_);
  // The data ends at the first "="; spaces before it carry nothing.
  const void* pad = std::memchr(chars_, '=', size_);
  std::size_t end = pad ? static_cast<std::size_t>(static_cast<const char*>(pad) - chars_) : size_;
  std::size_t spaces = CountSpaces(reinterpret_cast<const unsigned char*>(chars_), end);
  long long symbols = static_cast<long long>(end - spaces);
  decodedLength_ = symbols / 4 * 3 + (symbols % 4 == 3 ? 2 : symbols % 4 == 2 ? 1 : 0);
}

int CBase64Decoder::DecodeGroups(unsigned char* out, int count) {
  // Locals throughout: stores through out could otherwise alias the members
  // and force them to be reloaded on every group.
  const auto* text = reinterpret_cast<const unsigned char*>(chars_);
  const std::uint32_t* d0 = alphabet_->DecodeTable(0);
  const std::uint32_t* d1 = alphabet_->DecodeTable(1);
  const std::uint32_t* d2 = alphabet_->DecodeTable(2);
  const std::uint32_t* d3 = alphabet_->DecodeTable(3);
  const std::size_t size = size_;
  std::size_t index = index_;
  int produced = 0;
#if MOX_BASE64_SSE2
  if (alphabet_->IsLettersAndDigits()) {
    const unsigned char c62 = alphabet_->Character62();
    const unsigned char c63 = alphabet_->Character63();
    while (produced + 13 <= count && index + 16 <= size && DecodeSixteen(text + index, out + produced, c62, c63)) {
      produced += 12;
      index += 16;
    }
  }
#endif
  // Eight characters (two groups) per load; their 48 bits go out in one
  // 8-byte store while two spare bytes of room remain.
  while (produced + 8 <= count && index + 8 <= size) {
    std::uint64_t c;
    std::memcpy(&c, text + index, 8);
    std::uint64_t first = d0[c & 0xFF] | d1[(c >> 8) & 0xFF] | d2[(c >> 16) & 0xFF] | d3[(c >> 24) & 0xFF];
    std::uint64_t second = d0[(c >> 32) & 0xFF] | d1[(c >> 40) & 0xFF] | d2[(c >> 48) & 0xFF] | d3[c >> 56];
    std::uint64_t both = first << 40 | second << 16;
    if ((first | second) & CBase64Alphabet::NotData) break;
    both = __builtin_bswap64(both);
    std::memcpy(out + produced, &both, 8);
    produced += 6;
    index += 8;
  }
  while (produced + 3 <= count && index + 4 <= size) {
    const unsigned char* c = text + index;
    std::uint32_t bits = d0[c[0]] | d1[c[1]] | d2[c[2]] | d3[c[3]];
    if (bits & CBase64Alphabet::NotData) break;
    out[produced] = static_cast<unsigned char>(bits >> 16);
    out[produced + 1] = static_cast<unsigned char>(bits >> 8);
    out[produced + 2] = static_cast<unsigned char>(bits);
    produced += 3;
    index += 4;
  }
  index_ = index;
  return produced;
}

bool CBase64Decoder::Step(unsigned char* out, int& produced) {
  if (carriedBits_ >= 8) {
    carriedBits_ -= 8;
    out[produced++] = static_cast<unsigned char>(carried_ >> carriedBits_);
    return true;
  }
  if (index_ >= size_) return false;
  auto c = static_cast<unsigned char>(chars_[index_]);
  if (c == '=') return false;
  ++index_;
  if (CBase64Alphabet::IsSpace(c)) return true;
  carried_ = (carried_ << 6 | alphabet_->Value(c)) & 0xFFFFFFu;
  carriedBits_ += 6;
  return true;
}

Result CBase64Decoder::Read(unsigned char* buffer, int count, int* read) {
  if (read) *read = 0;
  if (count < 0) return ResultArgumentOutOfRange();
  long long left = decodedLength_ - produced_;
  int wanted = left < count ? static_cast<int>(left) : count;
  if (wanted > 0 && !buffer) return ResultArgumentNull();
  int produced = 0;
  while (produced < wanted) {
    // Whole groups go the fast way whenever the carried bits are used up.
    if (carriedBits_ == 0) produced += DecodeGroups(buffer + produced, wanted - produced);
    if (produced >= wanted || !Step(buffer, produced)) break;
  }
  produced_ += produced;
  if (read) *read = produced;
  return Result();
}

int CBase64Decoder::ReadByte() {
  unsigned char byte = 0;
  int read = 0;
  Read(&byte, 1, &read);
  return read == 1 ? byte : -1;
}

Result CBase64Decoder::Seek(long long, SeekOrigin, long long*) { return ResultNotSupported(); }

Result CBase64Decoder::Write(const unsigned char*, int, int* written) {
  if (written) *written = 0;
  return ResultNotSupported();
}

Result CBase64Decoder::Decode(const char* text, CByteArray*& out, const char* alphabet) {
  out = nullptr;
  if (!text) return ResultArgumentNull();
  // The text outlives this call, so the decoder reads it in place.
  RObject<CBase64Decoder> decoder(new CBase64Decoder(text, alphabet, true));
  RObject<CByteArray> bytes(new CByteArray(static_cast<int>(decoder->GetLength()), 1));
  int read = 0;
  Result result = decoder->Read(bytes->GetData(), bytes->GetLength(), &read);
  if (result.Failed()) return result;
  bytes->SetLength(read);
  out = bytes.Detach();
  return result;
}

Result CBase64Decoder::Decode(CString* text, CByteArray*& out, const char* alphabet) {
  return Decode(text ? text->GetChars() : nullptr, out, alphabet);
}

CByteArray* CBase64Decoder::Decode(const char* text, const char* alphabet) {
  CByteArray* bytes = nullptr;
  Decode(text, bytes, alphabet);
  return bytes;
}

CByteArray* CBase64Decoder::Decode(CString* text, const char* alphabet) {
  return Decode(text ? text->GetChars() : nullptr, alphabet);
}

}  // namespace Corvane::Mox
