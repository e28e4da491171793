#include "System/Media/Container/Wav64ContainerReader.h"

#include <algorithm>
#include <iterator>

#include "System/Collections/Value.h"
#include "System/Console.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/Stream.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Variance/Variance.h"
#include "System/Media/Wav/BwfProperties.h"
#include "System/Media/Wav/WaveBroadcastExtension.h"
#include "System/PropertiesDocumentation.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

namespace {

constexpr long long HeaderSize = 24;
// The most bytes one sample refers to.
constexpr long long MaximumSampleBytes = 64ll << 20;

long long PaddedTo8(long long size) { return (size + 7) & ~7ll; }

unsigned int PcmFormat(int bits) {
  switch (bits) {
    case 8: return FourCC("raw ");
    case 16: return FourCC("sowt");
    case 24: return FourCC("42ni");
    case 32: return FourCC("23ni");
    default: return 0;
  }
}

// What the PCM widths and IEEE float map to.
constexpr unsigned int kFormats[] = {FourCC("raw "), FourCC("sowt"), FourCC("42ni"), FourCC("23ni"), FourCC("23lf")};

}  // namespace

const Guid CWav64ContainerReader::riff(0x66666972, 0x912E, 0x11CF, 0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0x00, 0x00);
const Guid CWav64ContainerReader::wave(0x65766177, 0xACF3, 0x11D3, 0x8C, 0xD1, 0x00, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A);
const Guid CWav64ContainerReader::fmt(0x20746D66, 0xACF3, 0x11D3, 0x8C, 0xD1, 0x00, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A);
const Guid CWav64ContainerReader::data(0x61746164, 0xACF3, 0x11D3, 0x8C, 0xD1, 0x00, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A);
const Guid CWav64ContainerReader::bext(0x74786562, 0xACF3, 0x11D3, 0x8C, 0xD1, 0x00, 0xC0, 0x4F, 0x8E, 0xDB, 0x8A);

CWav64ContainerReader::CWav64ContainerReader()
    : CSingleAudioTrackReader(ComponentCode),
      reader_(nullptr),
      properties_(nullptr),
      essenceStart_(0),
      frames_(0),
      delivered_(0) {}

CWav64ContainerReader::~CWav64ContainerReader() {
  Close();
  if (properties_) properties_->Release();
}

void CWav64ContainerReader::Close() {
  if (reader_) {
    reader_->Close();
    reader_->Release();
    reader_ = nullptr;
  }
  if (stream_) {
    stream_->Release();
    stream_ = nullptr;
  }
}

int CWav64ContainerReader::Validate(CStream* stream) {
  if (!stream) return 0;
  RObject<CBinaryReader> reader(new CBinaryReader(stream));
  Guid first;
  Guid form;
  long long size = 0;
  Result result = reader->ReadGuid(&first);
  if (result.Succeeded()) result = reader->ReadInt64(&size);
  if (result.Succeeded()) result = reader->ReadGuid(&form);
  reader->Close();
  if (result.Failed()) return 0;
  return first == riff && form == wave ? 128 : 0;
}

Result CWav64ContainerReader::ReadHeader() {
  Guid id;
  long long size = 0;
  Result result = reader_->Seek(0, SeekOrigin::Begin, nullptr);
  if (result.Succeeded()) result = reader_->ReadGuid(&id);
  if (result.Failed()) return result;
  if (id != riff) return ResultError("incorrect chunk identifier (expected 'riff')");
  result = reader_->ReadInt64(&size);
  if (result.Failed()) return result;
  if (size < 20) return ResultError("invalid 'riff'");
  result = reader_->ReadGuid(&id);
  if (result.Failed()) return result;
  if (id != wave) return ResultError("incorrect format (expected 'wave')");
  return Result();
}

Result CWav64ContainerReader::ReadBroadcastAudioExtension(CBinaryReader* reader, long long size) {
  if (!reader) return ResultArgumentNull();
  if (size < 0 || size > CWaveChunk::MaximumPayload) return ResultFormatError("'bext' of %lld bytes", size);
  RObject<CWaveBroadcastExtension> extension(
      new CWaveBroadcastExtension(reader->GetPosition() - HeaderSize, static_cast<unsigned int>(size)));
  Result result = extension->Read(reader);
  if (result.Failed()) return result;
  RObject<CBwfProperties> bwf(new CBwfProperties(extension.Get()));
  return properties_->AddExtension(bwf.Get());
}

Result CWav64ContainerReader::ReadChunks(CWindowsAudioFormat*& format, long long& dataSize) {
  format = nullptr;
  const long long length = reader_->GetLength();
  for (long long position = reader_->GetPosition(); position + HeaderSize <= length;) {
    Guid id;
    long long size = 0;
    Result result = reader_->Seek(position, SeekOrigin::Begin, nullptr);
    if (result.Succeeded()) result = reader_->ReadGuid(&id);
    if (result.Succeeded()) result = reader_->ReadInt64(&size);
    if (result.Failed()) return result;
    if (size < HeaderSize) return ResultFormatError("chunk of %lld bytes at %lld", size, position);
    const long long payload = size - HeaderSize;
    if (id == data) {
      if (!format) return ResultError("missing 'fmt ' chunk");
      essenceStart_ = position + HeaderSize;
      dataSize = payload;
      return Result();
    }
    if (id == fmt) {
      RObject<CWindowsAudioFormat> read(new CWindowsAudioFormat());
      result = read->Read(reader_, static_cast<int>(std::min(payload, 0x10000ll)));
      if (result.Failed()) return result;
      if (format) format->Release();
      format = read.Detach();
    } else if (id == bext && ReadBroadcastAudioExtension(reader_, payload).Failed()) {
      MOX_LOG(2, "the 'bext' chunk at %lld cannot be read; it is skipped\n", position);
    }
    // Guard the walk against sizes that would wrap around.
    if (PaddedTo8(payload) > length) break;
    position += HeaderSize + PaddedTo8(payload);
  }
  return ResultError(format ? "missing 'data' chunk" : "missing 'fmt ' chunk");
}

Result CWav64ContainerReader::DescribeTrack(CWindowsAudioFormat* format, long long dataSize) {
  unsigned int code = 0;
  const int bits = format->GetBitsPerSample();
  const unsigned short tag = format->GetFormat();
  if (tag == CWindowsAudioFormat::FormatPcm || tag == 0) {
    code = PcmFormat(bits);
    if (!code) return ResultError("unsupported wBitsPerSample %d", bits);
  } else if (tag == CWindowsAudioFormat::FormatIeeeFloat) {
    code = FourCC("23lf");
  } else {
    return ResultError("unsupported formatd");
  }
  const int blockAlignment = format->GetBlockAlignment();
  Result result = properties_->SetFormat(code);
  if (result.Succeeded()) result = properties_->SetBitRate(static_cast<long long>(format->GetBytesPerSecond()) * 8);
  if (result.Succeeded()) result = properties_->SetSampleRate(format->GetSamplesPerSecond());
  if (result.Succeeded()) result = properties_->SetChannels(format->GetChannels());
  if (result.Succeeded()) result = properties_->SetBitsPerSample(bits);
  if (result.Succeeded()) result = properties_->SetBytesPerFrame(blockAlignment);
  if (result.Succeeded()) result = properties_->SetBytesPerPacket(blockAlignment);
  if (result.Succeeded()) result = properties_->SetFramesPerPacket(1);
  if (result.Succeeded()) result = properties_->SetSampleDuration(1);
  const unsigned int mask = format->GetChannelMask();
  for (int bit = 0, channel = 0; bit < 32 && channel < format->GetChannels() && result.Succeeded(); ++bit) {
    if (mask & (1u << bit)) result = properties_->SetChannelLabel(channel++, bit + 1);
  }
  if (result.Failed()) return ResultFormatError(result, "unsupported 'fmt ' values");
  const long long available = std::max(0ll, stream_->GetLength() - essenceStart_);
  if (dataSize > available) {
    MOX_LOG(2, "'data' chunk of %lld bytes holds %lld; the track is shortened\n", dataSize, available);
    CVariance::Report(essenceStart_, CVariance::Major, "'data' chunk of %lld bytes holds %lld\n", dataSize, available);
    dataSize = available;
  }
  const int bytesPerFrame = properties_->GetBytesPerFrame();
  frames_ = bytesPerFrame > 0 ? dataSize / bytesPerFrame : 0;
  return properties_->SetDuration(frames_);
}

Result CWav64ContainerReader::BeginIndex() {
  if (stream_) return ResultFalse();
  Result result = OpenStream(stream_);
  if (result.Failed()) return result;
  reader_ = new CBinaryReader(stream_);
  if (properties_) properties_->Release();
  properties_ = new CAudioProperties();
  RObject<CWindowsAudioFormat> format;
  long long dataSize = 0;
  {
    CAutoLock lock(stream_);
    result = ReadHeader();
    if (result.Succeeded()) result = ReadChunks(format.Out(), dataSize);
  }
  if (result.Succeeded()) result = DescribeTrack(format.Get(), dataSize);
  if (result.Failed()) {
    MOX_LOG(2, "unable to index: %s\n", result.GetDetails() ? result.GetDetails() : result.GetErrorMessage());
    properties_->Release();
    properties_ = nullptr;
    Close();
    SynchronizeVariances();
    return result;
  }
  delivered_ = 0;
  SynchronizeVariances();
  SetReady(true);
  return Result();
}

Result CWav64ContainerReader::EndIndex() {
  SetReady(false);
  Close();
  return Result();
}

CFormatList* CWav64ContainerReader::GetAudioFormats() const {
  return NewFormatList(kFormats, static_cast<int>(std::size(kFormats)));
}

CAudioProperties* CWav64ContainerReader::GetTrack() const { return properties_; }

Result CWav64ContainerReader::ReadAudioSample(int track, CAudioSample*& sample) {
  sample = nullptr;
  if (track != 0 || !properties_) return ResultIndexOutOfRange();
  if (!stream_) return ResultInvalidOperation("the reader is not indexing");
  CAutoLock lock(stream_);
  const long long bytesPerPacket = properties_->GetBytesPerPacket();
  if (bytesPerPacket <= 0) return Result();
  // A second of audio, but never more bytes than one sample may hold (a
  // damaged header can claim any rate).
  const long long count =
      std::min({properties_->GetTimeScale(), frames_ - delivered_, std::max(1ll, MaximumSampleBytes / bytesPerPacket)});
  if (count <= 0) return Result();
  sample = new CAudioSample(count);
  sample->SetTime(delivered_);
  RObject<CContainerDataReference> reference(new CContainerDataReference(
      CContainerDataReference::TypeCode, essenceStart_ + delivered_ * bytesPerPacket,
      static_cast<int>(bytesPerPacket * count)));
  sample->SetDataReference(reference.Get());
  delivered_ += count;
  return Result();
}

CProperties* CWav64ContainerReader::GetDocumentation() const {
  return IPropertiesDocumentation::GetDocumentationT<ContainerProperty::Wav64ContainerReader>();
}

}  // namespace Corvane::Mox
