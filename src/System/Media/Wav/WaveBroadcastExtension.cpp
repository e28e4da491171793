#include "System/Media/Wav/WaveBroadcastExtension.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Properties.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

constexpr int ReservedSize = 180;

// Bytes above 0x7F are taken as Latin-1 so that any byte gives valid text.
void AppendLatin1(std::string& text, unsigned char c) {
  if (c < 0x80) {
    text.push_back(static_cast<char>(c));
  } else {
    text.push_back(static_cast<char>(0xC0 | (c >> 6)));
    text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

// Text up to the first zero.
CString* TextOf(const unsigned char* bytes, int size) {
  std::string text;
  for (int i = 0; i < size && bytes[i]; ++i) AppendLatin1(text, bytes[i]);
  return CString::WithString(text.c_str());
}

void Fill(unsigned char* field, int size, const unsigned char* bytes, int count) {
  std::memset(field, 0, static_cast<size_t>(size));
  if (bytes && count > 0) std::memcpy(field, bytes, static_cast<size_t>(count < size ? count : size));
}

Result FillText(unsigned char* field, int size, CString* text) {
  const char* chars = text ? text->GetChars() : nullptr;
  Fill(field, size, reinterpret_cast<const unsigned char*>(chars), chars ? static_cast<int>(std::strlen(chars)) : 0);
  return Result();
}

Result FillBytes(unsigned char* field, int size, CByteArray* bytes) {
  Fill(field, size, bytes ? bytes->GetData() : nullptr, bytes ? bytes->GetLength() : 0);
  return Result();
}

// Line breaks as the two-character escapes, so the history prints on one line.
std::string Escaped(CByteArray* bytes) {
  std::string text;
  for (int i = 0; i < bytes->GetLength(); ++i) {
    const unsigned char c = bytes->GetData()[i];
    if (c == '\r') {
      text += "\\r";
    } else if (c == '\n') {
      text += "\\n";
    } else if (c) {
      AppendLatin1(text, c);
    }
  }
  return text;
}

Result SetFormatted(CProperties* bag, const char* key, const char* format, short hundredths) {
  char text[32];
  std::snprintf(text, sizeof(text), format, hundredths / 100.0);
  return bag->SetProperty(key, text);
}

}  // namespace

CWaveBroadcastExtension::CWaveBroadcastExtension() : CWaveBroadcastExtension(0, 0) {}

CWaveBroadcastExtension::CWaveBroadcastExtension(long long position, unsigned int size)
    : CWaveChunk(position, TypeCode, size),
      description_{},
      originator_{},
      originatorReference_{},
      originationDate_{},
      originationTime_{},
      timeReference_(0),
      version_(1),
      umid_{},
      loudness_{},
      codingHistory_(nullptr) {}

CWaveBroadcastExtension::~CWaveBroadcastExtension() {
  if (codingHistory_) codingHistory_->Release();
}

CString* CWaveBroadcastExtension::GetDescription() const { return TextOf(description_, DescriptionSize); }
Result CWaveBroadcastExtension::SetDescription(CString* text) { return FillText(description_, DescriptionSize, text); }
Result CWaveBroadcastExtension::SetDescription(CByteArray* bytes) {
  return FillBytes(description_, DescriptionSize, bytes);
}
CString* CWaveBroadcastExtension::GetOriginator() const { return TextOf(originator_, OriginatorSize); }
Result CWaveBroadcastExtension::SetOriginator(CString* text) { return FillText(originator_, OriginatorSize, text); }
Result CWaveBroadcastExtension::SetOriginator(CByteArray* bytes) { return FillBytes(originator_, OriginatorSize, bytes); }
CString* CWaveBroadcastExtension::GetOriginatorReference() const {
  return TextOf(originatorReference_, OriginatorReferenceSize);
}
Result CWaveBroadcastExtension::SetOriginatorReference(CString* text) {
  return FillText(originatorReference_, OriginatorReferenceSize, text);
}
Result CWaveBroadcastExtension::SetOriginatorReference(CByteArray* bytes) {
  return FillBytes(originatorReference_, OriginatorReferenceSize, bytes);
}
CString* CWaveBroadcastExtension::GetOriginationDate() const { return TextOf(originationDate_, OriginationDateSize); }
Result CWaveBroadcastExtension::SetOriginationDate(CString* text) {
  return FillText(originationDate_, OriginationDateSize, text);
}
Result CWaveBroadcastExtension::SetOriginationDate(CByteArray* bytes) {
  return FillBytes(originationDate_, OriginationDateSize, bytes);
}
CString* CWaveBroadcastExtension::GetOriginationTime() const { return TextOf(originationTime_, OriginationTimeSize); }
Result CWaveBroadcastExtension::SetOriginationTime(CString* text) {
  return FillText(originationTime_, OriginationTimeSize, text);
}
Result CWaveBroadcastExtension::SetOriginationTime(CByteArray* bytes) {
  return FillBytes(originationTime_, OriginationTimeSize, bytes);
}

CByteArray* CWaveBroadcastExtension::GetUmid() const { return new CByteArray(umid_, UmidSize); }
Result CWaveBroadcastExtension::SetUmid(CByteArray* bytes) { return FillBytes(umid_, UmidSize, bytes); }

CByteArray* CWaveBroadcastExtension::GetCodingHistory() const {
  if (codingHistory_) codingHistory_->Acquire();
  return codingHistory_;
}

void CWaveBroadcastExtension::SetCodingHistory(CByteArray* bytes) {
  if (bytes) bytes->Acquire();
  if (codingHistory_) codingHistory_->Release();
  codingHistory_ = bytes;
}

Result CWaveBroadcastExtension::SetCodingHistory(CString* text) {
  if (!text) {
    SetCodingHistory(static_cast<CByteArray*>(nullptr));
    return Result();
  }
  const char* chars = text->GetChars();
  RObject<CByteArray> bytes(
      new CByteArray(reinterpret_cast<const unsigned char*>(chars), static_cast<int>(std::strlen(chars))));
  SetCodingHistory(bytes.Get());
  return Result();
}

unsigned int CWaveBroadcastExtension::GetSize() const {
  const unsigned int history = codingHistory_ ? static_cast<unsigned int>(codingHistory_->GetLength()) : 0;
  return FixedSize + ((history + 1) & ~1u);
}

Result CWaveBroadcastExtension::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  const unsigned int size = GetHeaderSize();
  if (size < FixedSize || size > static_cast<unsigned int>(MaximumPayload))
    return ResultFormatError("'bext' chunk of %u bytes", size);
  long long timeReference = 0;
  short version = 0;
  Result result = reader->ReadBytes(description_, DescriptionSize);
  if (result.Succeeded()) result = reader->ReadBytes(originator_, OriginatorSize);
  if (result.Succeeded()) result = reader->ReadBytes(originatorReference_, OriginatorReferenceSize);
  if (result.Succeeded()) result = reader->ReadBytes(originationDate_, OriginationDateSize);
  if (result.Succeeded()) result = reader->ReadBytes(originationTime_, OriginationTimeSize);
  if (result.Succeeded()) result = reader->ReadInt64(&timeReference);
  if (result.Succeeded()) result = reader->ReadInt16(&version);
  if (result.Succeeded()) result = reader->ReadBytes(umid_, UmidSize);
  for (short& value : loudness_) {
    if (result.Succeeded()) result = reader->ReadInt16(&value);
  }
  if (result.Succeeded()) result = reader->Skip(ReservedSize);
  if (result.Failed()) return result;
  timeReference_ = static_cast<unsigned long long>(timeReference);
  version_ = static_cast<unsigned short>(version);
  SetCodingHistory(static_cast<CByteArray*>(nullptr));
  if (size == FixedSize) return Result();
  RObject<CByteArray> history(new CByteArray(nullptr, static_cast<int>(size - FixedSize)));
  result = reader->ReadBytes(history->GetData(), history->GetLength());
  if (result.Succeeded()) SetCodingHistory(history.Get());
  return result;
}

Result CWaveBroadcastExtension::Write(CBinaryWriter* writer) {
  Result result = CWaveChunk::Write(writer);
  if (result.Succeeded()) result = writer->WriteBytes(description_, DescriptionSize);
  if (result.Succeeded()) result = writer->WriteBytes(originator_, OriginatorSize);
  if (result.Succeeded()) result = writer->WriteBytes(originatorReference_, OriginatorReferenceSize);
  if (result.Succeeded()) result = writer->WriteBytes(originationDate_, OriginationDateSize);
  if (result.Succeeded()) result = writer->WriteBytes(originationTime_, OriginationTimeSize);
  if (result.Succeeded()) result = writer->WriteInt64(static_cast<long long>(timeReference_));
  if (result.Succeeded()) result = writer->WriteInt16(static_cast<short>(version_));
  if (result.Succeeded()) result = writer->WriteBytes(umid_, UmidSize);
  for (short value : loudness_) {
    if (result.Succeeded()) result = writer->WriteInt16(value);
  }
  const unsigned char reserved[ReservedSize] = {};
  if (result.Succeeded()) result = writer->WriteBytes(reserved, ReservedSize);
  if (result.Succeeded() && codingHistory_) result = writer->WriteBytes(codingHistory_);
  if (result.Succeeded() && codingHistory_ && (codingHistory_->GetLength() & 1)) result = writer->WriteByte(0);
  return result;
}

Result CWaveBroadcastExtension::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  const struct {
    const char* key;
    RObject<CString> text;
  } texts[] = {{"description", GetDescription()},
               {"originator", GetOriginator()},
               {"originator_reference", GetOriginatorReference()},
               {"origination_date", GetOriginationDate()},
               {"origination_time", GetOriginationTime()}};
  for (const auto& entry : texts) bag->SetProperty(entry.key, entry.text.Get());
  bag->SetProperty("time_reference", static_cast<long long>(timeReference_));
  bag->SetProperty("version", static_cast<int>(version_));
  std::string umid;
  for (unsigned char byte : umid_) {
    char hex[3];
    std::snprintf(hex, sizeof(hex), "%02x", byte);
    umid += hex;
  }
  bag->SetProperty("umid", umid.c_str());
  SetFormatted(bag, "loudness_value", "%.2f LUFS", loudness_[0]);
  SetFormatted(bag, "loudness_range", "%.2f LU", loudness_[1]);
  SetFormatted(bag, "max_true_peak_level", "%.2f dBTP", loudness_[2]);
  SetFormatted(bag, "max_momentary_loudness", "%.2f LUFS", loudness_[3]);
  SetFormatted(bag, "max_short_term_loudness", "%.2f LUFS", loudness_[4]);
  if (codingHistory_) bag->SetProperty("coding_history", Escaped(codingHistory_).c_str());
  return Result();
}

}  // namespace Corvane::Mox
