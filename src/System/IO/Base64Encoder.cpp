#include "System/IO/Base64Encoder.h"

#include <algorithm>
#include <cstring>

#include "System/ByteArray.h"
#include "System/IO/Base64Alphabet.h"
#include "System/Text.h"

namespace Corvane::Mox {

CBase64Encoder::CBase64Encoder(int capacity, bool lineBreaks, const char* alphabet)
    : CBase64Encoder(capacity, lineBreaks ? "\n" : "", alphabet) {}

CBase64Encoder::CBase64Encoder(int capacity, const char* separator, const char* alphabet)
    : CStream(TypeCode),
      alphabet_(CBase64Alphabet::For(alphabet, ownAlphabet_)),
      capacity_(std::max(capacity, 0)),
      separator_(separator ? separator : ""),
      length_(0),
      inputCount_(0),
      carried_{0, 0, 0},
      carriedCount_(0),
      lineCount_(0),
      closed_(false) {
  // Whole groups, one padded group and the terminator, and a separator per line.
  std::size_t size = static_cast<std::size_t>(capacity_ / 3) * 4 + 5 +
                     static_cast<std::size_t>(capacity_ / LineBytes) * separator_.size();
  text_ = std::make_unique<char[]>(size);
  text_[0] = 0;
}

CBase64Encoder::~CBase64Encoder() = default;

Result CBase64Encoder::Read(unsigned char*, int, int* read) {
  if (read) *read = 0;
  return ResultNotSupported();
}

Result CBase64Encoder::Seek(long long, SeekOrigin, long long*) { return ResultNotSupported(); }

void CBase64Encoder::EndLineIfFull() {
  if (lineCount_ < LineBytes) return;
  lineCount_ = 0;
  std::memcpy(text_.get() + length_, separator_.data(), separator_.size());
  length_ += separator_.size();
}

void CBase64Encoder::EncodeRun(const unsigned char* input, int count) {
  // Locals: stores through out could otherwise alias the members.
  const CBase64Alphabet& alphabet = *alphabet_;
  char* out = text_.get() + length_;
  const unsigned char* end = input + count;
  // Two groups per 8-byte load while 8 bytes remain to be read.
  for (; end - input >= 8; input += 6, out += 8) {
    std::uint64_t word;
    std::memcpy(&word, input, 8);
    word = __builtin_bswap64(word);  // the first byte highest
    auto first = static_cast<unsigned int>(word >> 40);
    auto second = static_cast<unsigned int>(word >> 16);
    std::uint16_t pairs[4] = {alphabet.Pair(first >> 12), alphabet.Pair(first), alphabet.Pair(second >> 12),
                              alphabet.Pair(second)};
    std::memcpy(out, pairs, 8);
  }
  for (; input < end; input += 3, out += 4) {
    unsigned int group = static_cast<unsigned int>(input[0]) << 16 | static_cast<unsigned int>(input[1]) << 8 | input[2];
    std::uint16_t pairs[2] = {alphabet.Pair(group >> 12), alphabet.Pair(group)};
    std::memcpy(out, pairs, 4);
  }
  length_ += static_cast<std::size_t>(count / 3) * 4;
  lineCount_ += count;
}

const unsigned char* CBase64Encoder::EncodeGroups(const unsigned char* input, int count) {
  while (count >= 3) {
    // Lines hold a whole number of groups, so a run never straddles one.
    int run = std::min(count / 3 * 3, LineBytes - lineCount_);
    EncodeRun(input, run);
    input += run;
    count -= run;
    EndLineIfFull();
  }
  return input;
}

Result CBase64Encoder::Write(const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  if (closed_) return ResultInvalidOperation();
  if (count < 0) return ResultArgumentOutOfRange();
  if (count > capacity_ - inputCount_) return ResultEndOfStream();
  if (count > 0 && !buffer) return ResultArgumentNull();
  const unsigned char* input = buffer;
  const unsigned char* end = buffer + count;
  // Complete the group left over from the last write.
  while (carriedCount_ > 0 && carriedCount_ < 3 && input < end) {
    carried_[carriedCount_++] = *input++;
    if (carriedCount_ == 3) {
      EncodeRun(carried_, 3);
      EndLineIfFull();
      carriedCount_ = 0;
    }
  }
  input = EncodeGroups(input, static_cast<int>(end - input));
  // Fewer than 3 bytes are left, and nothing is carried any more.
  while (input < end && carriedCount_ < 3) carried_[carriedCount_++] = *input++;
  inputCount_ += count;
  text_[length_] = 0;
  if (written) *written = count;
  return Result();
}

void CBase64Encoder::Close() {
  if (closed_) return;
  closed_ = true;
  if (carriedCount_ > 0) {
    unsigned int group = static_cast<unsigned int>(carried_[0]) << 16;
    if (carriedCount_ == 2) group |= static_cast<unsigned int>(carried_[1]) << 8;
    char* out = text_.get() + length_;
    out[0] = alphabet_->Character(group >> 18);
    out[1] = alphabet_->Character(group >> 12);
    out[2] = carriedCount_ == 2 ? alphabet_->Character(group >> 6) : '=';
    out[3] = '=';
    length_ += 4;
    carriedCount_ = 0;
  }
  text_[length_] = 0;
}

CString* CBase64Encoder::GetEncoded() const { return new CString(text_.get(), static_cast<int>(length_)); }

CString* CBase64Encoder::Encode(const unsigned char* bytes, int count, const char* separator, const char* alphabet) {
  RObject<CBase64Encoder> encoder(new CBase64Encoder(count, separator, alphabet));
  if (encoder->Write(bytes, count, nullptr).Failed()) return nullptr;
  encoder->Close();
  return encoder->GetEncoded();
}

CString* CBase64Encoder::Encode(const unsigned char* bytes, int count, bool lineBreaks, const char* alphabet) {
  return Encode(bytes, count, lineBreaks ? "\n" : "", alphabet);
}

CString* CBase64Encoder::Encode(CByteArray* bytes, bool lineBreaks, const char* alphabet) {
  if (!bytes) return nullptr;
  return Encode(bytes->GetData(), bytes->GetLength(), lineBreaks ? "\n" : "", alphabet);
}

CString* CBase64Encoder::Encode(CByteArray* bytes, const char* separator, const char* alphabet) {
  if (!bytes) return nullptr;
  return Encode(bytes->GetData(), bytes->GetLength(), separator, alphabet);
}

}  // namespace Corvane::Mox
