#include "System/IO/StreamReader.h"

#include "System/ByteArray.h"
#include "System/IO/Stream.h"
#include "System/Text.h"
#include "System/Text/Encoding.h"

namespace Corvane::Mox {

namespace {

bool IsUtf8(const CEncoding* encoding) {
  RObject<CString> name(encoding->GetEncodingType());
  return name->EqualsIgnoreCase("UTF-8") || name->EqualsIgnoreCase("UTF8");
}

std::vector<unsigned char> Encode(const CEncoding* encoding, const wchar_t* text) {
  RObject<CByteArray> bytes(encoding->GetBytes(text));
  if (!bytes) return {};
  return std::vector<unsigned char>(bytes->GetData(), bytes->GetData() + bytes->GetLength());
}

// The encoded unit of one character. Some encodings put a byte-order mark in
// front of everything they write; encoding the character twice tells the
// unit from such a prefix.
std::vector<unsigned char> EncodedUnit(const CEncoding* encoding, wchar_t c) {
  const wchar_t once[2] = {c, 0};
  const wchar_t twice[3] = {c, c, 0};
  std::vector<unsigned char> single = Encode(encoding, once);
  std::vector<unsigned char> doubled = Encode(encoding, twice);
  std::size_t unit = doubled.size() > single.size() ? doubled.size() - single.size() : single.size();
  if (unit == 0 || unit > single.size()) return single;
  return std::vector<unsigned char>(single.end() - static_cast<std::ptrdiff_t>(unit), single.end());
}

// Continuation bytes that follow a UTF-8 lead byte: one fewer than its
// leading 1 bits.
int ContinuationCount(unsigned char lead) {
  int ones = 0;
  for (unsigned char mask = 0x80; mask && (lead & mask); mask >>= 1) ++ones;
  return ones > 0 ? ones - 1 : 0;
}

}  // namespace

CStreamReader::CStreamReader(CStream* stream) : CStreamReader(stream, nullptr) {}

CStreamReader::CStreamReader(CStream* stream, CEncoding* encoding)
    : CTextReader(TypeCode), stream_(stream), encoding_(encoding), utf8_(false) {
  if (stream_) stream_->Acquire();
  if (encoding_) encoding_->Acquire();
}

CStreamReader::~CStreamReader() {
  if (stream_) stream_->Release();
  if (encoding_) encoding_->Release();
}

CEncoding* CStreamReader::GetEncoding() {
  if (!encoding_) encoding_ = CEncoding::Create("UTF-8");
  return encoding_;
}

const CStreamReader::Terminators& CStreamReader::GetTerminators() {
  if (terminators_.lineFeed.empty()) {
    CEncoding* encoding = GetEncoding();
    utf8_ = IsUtf8(encoding);
    terminators_.lineFeed = EncodedUnit(encoding, L'\n');
    terminators_.carriageReturn = EncodedUnit(encoding, L'\r');
    if (terminators_.lineFeed.empty()) terminators_.lineFeed.push_back('\n');
  }
  return terminators_;
}

CString* CStreamReader::Decode(const std::vector<unsigned char>& bytes) {
  if (utf8_) return new CString(reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()));
  return GetEncoding()->GetString(bytes.data(), static_cast<int>(bytes.size()));
}

int CStreamReader::ReadBytes(unsigned char* bytes, int count) {
  int total = 0;
  while (total < count) {
    int read = 0;
    Result result = stream_->Read(bytes + total, count - total, &read);
    if (result.Failed()) return total > 0 ? total : -1;
    if (read <= 0) break;
    total += read;
  }
  return total;
}

CString* CStreamReader::Read(int count) {
  if (count < 0 || !stream_) return nullptr;
  GetTerminators();
  std::vector<unsigned char> bytes(static_cast<std::size_t>(count));
  int read = ReadBytes(bytes.data(), count);
  if (read < 0) return nullptr;
  bytes.resize(static_cast<std::size_t>(read));
  return Decode(bytes);
}

bool CStreamReader::ReadUnit(std::vector<unsigned char>& unit) {
  int read = ReadBytes(unit.data(), static_cast<int>(unit.size()));
  return read == static_cast<int>(unit.size());
}

void CStreamReader::SkipLineFeed(int unitSize) {
  std::vector<unsigned char> next(static_cast<std::size_t>(unitSize));
  if (ReadUnit(next) && next != terminators_.lineFeed) stream_->Seek(-unitSize, SeekOrigin::Current, nullptr);
}

void CStreamReader::AppendContinuation(std::vector<unsigned char>& line, unsigned char lead) {
  for (int i = ContinuationCount(lead); i > 0; --i) {
    unsigned char byte = 0;
    if (ReadBytes(&byte, 1) != 1) return;
    line.push_back(byte);
  }
}

CString* CStreamReader::ReadLine() {
  if (!stream_) return nullptr;
  const Terminators& terminators = GetTerminators();
  const int unitSize = static_cast<int>(terminators.lineFeed.size());
  const bool seekable = stream_->CanSeek();
  std::vector<unsigned char> line;
  std::vector<unsigned char> unit(static_cast<std::size_t>(unitSize));
  while (static_cast<int>(line.size()) < MaxLineBytes) {
    if (!ReadUnit(unit)) return line.empty() ? nullptr : Decode(line);
    if (unit == terminators.lineFeed) break;
    if (unit == terminators.carriageReturn) {
      if (!seekable) continue;
      SkipLineFeed(unitSize);
      break;
    }
    line.insert(line.end(), unit.begin(), unit.end());
    if (utf8_ && unit[0] >= 0xC0) AppendContinuation(line, unit[0]);
  }
  return Decode(line);
}

void CStreamReader::Close() {
  if (!stream_) return;
  stream_->Close();
  stream_->Release();
  stream_ = nullptr;
}

}  // namespace Corvane::Mox
