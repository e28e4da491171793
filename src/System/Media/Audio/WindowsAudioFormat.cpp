#include "System/Media/Audio/WindowsAudioFormat.h"

#include <algorithm>

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/Media/Audio/AdpcmExtension.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/ImaAdpcmExtension.h"
#include "System/Media/Formats/AudioFormat.h"

namespace Corvane::Mox {

namespace {

constexpr int PlainSize = 16;
// Speaker labels 1..18 have a channel mask bit (label − 1).
constexpr int MaskedLabels = 18;
// The GUID tail shared by every KSDATAFORMAT_SUBTYPE of a WAVE tag: the tag
// fills the first two bytes.
constexpr unsigned char SubFormatTail[14] = {0x00, 0x00, 0x00, 0x00, 0x10, 0x00, 0x80,
                                             0x00, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71};

unsigned int ReadLittle(const unsigned char* bytes, int count) {
  unsigned int value = 0;
  for (int i = count - 1; i >= 0; --i) value = (value << 8) | bytes[i];
  return value;
}

void WriteLittle(unsigned char* bytes, unsigned int value, int count) {
  for (int i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(value >> (8 * i));
}

struct PcmCode {
  unsigned int format;
  unsigned short tag;
  int bits;
};

// Codes a WAVE structure can express directly.
constexpr PcmCode kCodes[] = {
    {FourCC("raw "), CWindowsAudioFormat::FormatPcm, 8},
    {FourCC("sowt"), CWindowsAudioFormat::FormatPcm, 16},
    {FourCC("02ni"), CWindowsAudioFormat::FormatPcm, 20},
    {FourCC("42ni"), CWindowsAudioFormat::FormatPcm, 24},
    {FourCC("23ni"), CWindowsAudioFormat::FormatPcm, 32},
    {FourCC("23lf"), CWindowsAudioFormat::FormatIeeeFloat, 32},
    {FourCC("46lf"), CWindowsAudioFormat::FormatIeeeFloat, 64},
    {FourCC("alaw"), CWindowsAudioFormat::FormatAlaw, 8},
    {FourCC("ulaw"), CWindowsAudioFormat::FormatMulaw, 8},
    {CWindowsAudioFormat::MicrosoftPrefix | CWindowsAudioFormat::FormatAlaw, CWindowsAudioFormat::FormatAlaw, 8},
    {CWindowsAudioFormat::MicrosoftPrefix | CWindowsAudioFormat::FormatMulaw, CWindowsAudioFormat::FormatMulaw, 8},
};

const PcmCode* FindCode(unsigned int format) {
  for (const PcmCode& code : kCodes) {
    if (code.format == format) return &code;
  }
  return nullptr;
}

}  // namespace

CWindowsAudioFormat::CWindowsAudioFormat()
    : CObject(TypeCode),
      formatTag_(0),
      channels_(0),
      samplesPerSecond_(0),
      bytesPerSecond_(0),
      blockAlignment_(0),
      bitsPerSample_(0) {}

CWindowsAudioFormat::~CWindowsAudioFormat() = default;

Result CWindowsAudioFormat::Read(CBinaryReader* reader, int size) {
  if (!reader) return ResultArgumentNull();
  if (size < PlainSize) return ResultFormatError("WAVEFORMAT of %d bytes (at least 16 expected)", size);
  unsigned char fixed[PlainSize];
  Result result = reader->ReadBytes(fixed, PlainSize);
  if (result.Failed()) return result;
  formatTag_ = static_cast<unsigned short>(ReadLittle(fixed, 2));
  channels_ = static_cast<unsigned short>(ReadLittle(fixed + 2, 2));
  samplesPerSecond_ = ReadLittle(fixed + 4, 4);
  bytesPerSecond_ = ReadLittle(fixed + 8, 4);
  blockAlignment_ = static_cast<unsigned short>(ReadLittle(fixed + 12, 2));
  bitsPerSample_ = static_cast<unsigned short>(ReadLittle(fixed + 14, 2));
  extra_.clear();
  int consumed = PlainSize;
  if (size >= PlainSize + 2) {
    unsigned char count[2];
    result = reader->ReadBytes(count, 2);
    if (result.Failed()) return result;
    consumed += 2;
    // cbSize may claim more than the chunk holds; the chunk size wins.
    const int extra = std::min(static_cast<int>(ReadLittle(count, 2)), size - consumed);
    extra_.resize(static_cast<size_t>(extra));
    if (extra > 0) {
      result = reader->ReadBytes(extra_.data(), extra);
      if (result.Failed()) {
        extra_.clear();
        return result;
      }
    }
    consumed += extra;
  }
  return consumed < size ? reader->Skip(size - consumed) : Result();
}

int CWindowsAudioFormat::GetSize() const {
  if (formatTag_ == FormatPcm && extra_.empty()) return PlainSize;
  return PlainSize + 2 + static_cast<int>(extra_.size());
}

Result CWindowsAudioFormat::Write(CBinaryWriter* writer) const {
  if (!writer) return ResultArgumentNull();
  RObject<CByteArray> bytes(ToByteArray());
  return writer->WriteBytes(bytes.Get());
}

CByteArray* CWindowsAudioFormat::ToByteArray() const {
  const int size = GetSize();
  CByteArray* bytes = new CByteArray(nullptr, size);
  unsigned char* out = bytes->GetData();
  WriteLittle(out, formatTag_, 2);
  WriteLittle(out + 2, channels_, 2);
  WriteLittle(out + 4, samplesPerSecond_, 4);
  WriteLittle(out + 8, bytesPerSecond_, 4);
  WriteLittle(out + 12, blockAlignment_, 2);
  WriteLittle(out + 14, bitsPerSample_, 2);
  if (size > PlainSize) {
    WriteLittle(out + 16, static_cast<unsigned int>(extra_.size()), 2);
    std::copy(extra_.begin(), extra_.end(), out + 18);
  }
  return bytes;
}

Result CWindowsAudioFormat::Parse(const unsigned char* bytes, int length, CWindowsAudioFormat*& format) {
  format = nullptr;
  if (!bytes) return ResultArgumentNull();
  // The memory stream only reads from the bytes.
  RObject<CMemoryStream> stream(new CMemoryStream(length, const_cast<unsigned char*>(bytes)));
  RObject<CBinaryReader> reader(new CBinaryReader(stream.Get()));
  RObject<CWindowsAudioFormat> parsed(new CWindowsAudioFormat());
  Result result = parsed->Read(reader.Get(), length);
  if (result.Failed()) return result;
  format = parsed.Detach();
  return Result();
}

Result CWindowsAudioFormat::Parse(CByteArray* bytes, CWindowsAudioFormat*& format) {
  format = nullptr;
  if (!bytes) return ResultArgumentNull();
  return Parse(bytes->GetData(), bytes->GetLength(), format);
}

bool CWindowsAudioFormat::IsExtensible() const {
  return formatTag_ == FormatExtensible && static_cast<int>(extra_.size()) >= ExtensibleExtraBytes;
}

unsigned short CWindowsAudioFormat::GetFormat() const {
  if (IsExtensible()) return static_cast<unsigned short>(ReadLittle(extra_.data() + 6, 2));
  return formatTag_;
}

int CWindowsAudioFormat::GetValidBitsPerSample() const {
  if (IsExtensible()) {
    const int valid = static_cast<int>(ReadLittle(extra_.data(), 2));
    if (valid > 0) return valid;
  }
  return bitsPerSample_;
}

unsigned int CWindowsAudioFormat::GetChannelMask() const {
  return IsExtensible() ? ReadLittle(extra_.data() + 2, 4) : 0;
}

unsigned int CWindowsAudioFormat::GetAudioFormat(unsigned short tag, int bitsPerSample) {
  if (tag == FormatPcm || tag == FormatIeeeFloat) {
    for (const PcmCode& code : kCodes) {
      if (code.tag == tag && code.bits == bitsPerSample) return code.format;
    }
    return 0;
  }
  return MicrosoftPrefix | tag;
}

unsigned int CWindowsAudioFormat::GetAudioFormat() const { return GetAudioFormat(GetFormat(), bitsPerSample_); }

CByteArray* CWindowsAudioFormat::GetExtraBytes() const {
  if (extra_.empty()) return nullptr;
  return new CByteArray(extra_.data(), static_cast<int>(extra_.size()));
}

CObject* CWindowsAudioFormat::GetExtension() const {
  const int count = static_cast<int>(extra_.size());
  switch (GetFormat()) {
    case FormatAdpcm: return CAdpcmExtension::Create(extra_.data(), count);
    case FormatImaAdpcm: return CImaAdpcmExtension::Create(extra_.data(), count);
    default: return nullptr;
  }
}

void CWindowsAudioFormat::SetExtraBytes(const unsigned char* bytes, int count) {
  extra_.assign(bytes, bytes + std::max(count, 0));
}

void CWindowsAudioFormat::SetExtensible(int validBitsPerSample, unsigned int channelMask) {
  const unsigned short tag = GetFormat();
  extra_.assign(ExtensibleExtraBytes, 0);
  WriteLittle(extra_.data(), static_cast<unsigned int>(validBitsPerSample), 2);
  WriteLittle(extra_.data() + 2, channelMask, 4);
  WriteLittle(extra_.data() + 6, tag, 2);
  std::copy(std::begin(SubFormatTail), std::end(SubFormatTail), extra_.begin() + 8);
  formatTag_ = FormatExtensible;
}

int CWindowsAudioFormat::GetFramesPerPacket() const {
  RObject<CObject> extension(GetExtension());
  if (extension && extension->IsType(CAdpcmExtension::TypeCode))
    return static_cast<CAdpcmExtension*>(extension.Get())->GetSamplesPerBlock();
  if (extension && extension->IsType(CImaAdpcmExtension::TypeCode))
    return static_cast<CImaAdpcmExtension*>(extension.Get())->GetSamplesPerBlock();
  // GSM 6.10 starts its extra bytes with wSamplesPerBlock as the ADPCM
  // codecs do.
  if (GetFormat() == FormatGsm610 && extra_.size() >= 2)
    return std::max(1, static_cast<int>(ReadLittle(extra_.data(), 2)));
  // Fixed-width codes (PCM, G.711, G.726): the block holds whole frames.
  const int bitsPerFrame = bitsPerSample_ * channels_;
  if (bitsPerFrame <= 0 || blockAlignment_ == 0) return 1;
  return std::max(1, blockAlignment_ * 8 / bitsPerFrame);
}

Result CWindowsAudioFormat::GetProperties(CAudioProperties* properties) const {
  if (!properties) return ResultArgumentNull();
  Result result = properties->SetFormat(GetAudioFormat());
  if (result.Succeeded()) result = properties->SetSampleRate(samplesPerSecond_);
  if (result.Succeeded()) result = properties->SetChannels(channels_);
  if (result.Succeeded()) result = properties->SetBitsPerSample(std::min<int>(bitsPerSample_, 64));
  if (result.Succeeded()) result = properties->SetBytesPerFrame(blockAlignment_);
  if (result.Succeeded()) result = properties->SetBytesPerPacket(blockAlignment_);
  if (result.Succeeded()) result = properties->SetFramesPerPacket(GetFramesPerPacket());
  if (result.Succeeded()) result = properties->SetBitRate(static_cast<long long>(bytesPerSecond_) * 8);
  const unsigned int mask = GetChannelMask();
  int channel = 0;
  for (int bit = 0; bit < 32 && channel < channels_ && result.Succeeded(); ++bit) {
    if (mask & (1u << bit)) result = properties->SetChannelLabel(channel++, bit + 1);
  }
  return result;
}

unsigned int CWindowsAudioFormat::GetChannelMask(const CAudioProperties* properties) {
  unsigned int mask = 0;
  for (int channel = 0; channel < properties->GetChannels(); ++channel) {
    const int label = properties->GetChannelLabel(channel);
    const unsigned int bit = label >= 1 && label <= MaskedLabels ? 1u << (label - 1) : 0;
    // A channel without a maskable label, a repeated label or labels out of
    // mask order cannot be described by a mask: leave the layout undefined.
    if (!bit || (mask & bit) || mask >= bit) return 0;
    mask |= bit;
  }
  return mask;
}

Result CWindowsAudioFormat::SetProperties(const CAudioProperties* properties, bool extensible) {
  if (!properties) return ResultArgumentNull();
  const PcmCode* code = FindCode(AudioFormat::GetEquivalentFormat(properties->GetFormat()));
  if (!code) code = FindCode(properties->GetFormat());
  if (!code) return ResultNotSupported("audio format has no WAVE format tag");
  const int channels = properties->GetChannels();
  if (channels <= 0 || channels > 0xFFFF) return ResultInvalidArgument("%d channels", channels);
  const long long rate = properties->GetSampleRate();
  if (rate <= 0 || rate > 0xFFFFFFFFll) return ResultInvalidArgument("sample rate %lld", rate);
  // 20-bit samples travel in 3 bytes: the extensible form says so.
  const int container = code->bits == 20 ? 24 : code->bits;
  formatTag_ = code->tag;
  channels_ = static_cast<unsigned short>(channels);
  samplesPerSecond_ = static_cast<unsigned int>(rate);
  blockAlignment_ = static_cast<unsigned short>(container / 8 * channels);
  bytesPerSecond_ = static_cast<unsigned int>(rate * blockAlignment_);
  bitsPerSample_ = static_cast<unsigned short>(container);
  extra_.clear();
  if (extensible || code->bits == 20) SetExtensible(code->bits, GetChannelMask(properties));
  return Result();
}

}  // namespace Corvane::Mox
