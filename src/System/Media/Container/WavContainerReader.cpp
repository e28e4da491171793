#include "System/Media/Container/WavContainerReader.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "System/ByteArray.h"
#include "System/Collections/Value.h"
#include "System/Console.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/Stream.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Audio/MpegAudioHeader.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Container/AudioChannelCodingAnalyzer.h"
#include "System/Media/Container/AudioReaderProperties.h"
#include "System/Media/Formats/AudioFormat.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/TimeCode/AudioTimeCodeProperties.h"
#include "System/Media/Variance/Variance.h"
#include "System/Media/Wav/AdmChannelAllocation.h"
#include "System/Media/Wav/AdmDocument.h"
#include "System/Media/Wav/AdmProperties.h"
#include "System/Media/Wav/BwfDocument.h"
#include "System/Media/Wav/BwfProperties.h"
#include "System/Media/Wav/DolbyAudioMetadata.h"
#include "System/Media/Wav/DolbyAudioProperties.h"
#include "System/Media/Wav/WaveAxml.h"
#include "System/Media/Wav/WaveBroadcastExtension.h"
#include "System/Media/Wav/WaveData.h"
#include "System/Media/Wav/WaveDataSize64.h"
#include "System/Media/Wav/WaveFact.h"
#include "System/Media/Wav/WaveFormat.h"
#include "System/Media/Wav/WaveIxml.h"
#include "System/Media/Wav/WaveList.h"
#include "System/PropertiesDocumentation.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int Ms(unsigned int tag) { return CWindowsAudioFormat::MicrosoftPrefix | tag; }

constexpr unsigned int kFormats[] = {
    Ms(0x0006),     Ms(0x0007),     Ms(0x0002),     Ms(0x0011),     Ms(0x0045),     FourCC("gsm "),
    FourCC("raw "), FourCC("sowt"), FourCC("twos"), FourCC("02ni"), FourCC("in20"), FourCC("42ni"),
    FourCC("in24"), FourCC("23ni"), FourCC("in32"), FourCC("23lf"), FourCC("fl32"), FourCC("46lf"),
    FourCC("fl64"), FourCC("mpga"),
};

// The first six codes are the block codecs, the last is MPEG audio.
constexpr int BlockCodecs = 6;
constexpr int FormatCount = static_cast<int>(sizeof(kFormats) / sizeof(kFormats[0]));

// The most bytes one PCM sample refers to.
constexpr long long MaximumSampleBytes = 64ll << 20;

// Every value comes from the file's headers: the container's word.
constexpr CMediaReader::PropertyContext From = CMediaReader::Container;

int IndexOfFormat(unsigned int format) {
  // Microsoft GSM 6.10 is read as "gsm ".
  if (format == Ms(CWindowsAudioFormat::FormatGsm610)) format = FourCC("gsm ");
  for (int i = 0; i < FormatCount; ++i) {
    if (kFormats[i] == format) return i;
  }
  return -1;
}

template <class T>
T* FindChunk(CWaveList* list) {
  return static_cast<T*>(list->FindChunk(T::TypeCode));
}

}  // namespace

CWavContainerReader::CWavContainerReader()
    : CSingleAudioTrackReader(ComponentCode),
      reader_(nullptr),
      properties_(nullptr),
      kind_(Kind::None),
      essenceStart_(0),
      essenceEnd_(0),
      frames_(0),
      delivered_(0) {}

CWavContainerReader::~CWavContainerReader() {
  Close();
  if (properties_) properties_->Release();
}

CFormatList* CWavContainerReader::GetAudioFormats() const { return NewFormatList(kFormats, FormatCount); }

int CWavContainerReader::Validate(CStream* stream) {
  if (!stream) return 0;
  unsigned char header[12];
  int read = 0;
  Result result = stream->Read(header, sizeof(header), &read);
  if (result.Failed()) return result.GetResultCode() < 0 ? result.GetResultCode() : 0;
  if (read < 12) return 0;
  const bool riff = std::memcmp(header, "RIFF", 4) == 0 || std::memcmp(header, "RF64", 4) == 0;
  return riff && std::memcmp(header + 8, "WAVE", 4) == 0 ? 128 : 0;
}

void CWavContainerReader::Close() {
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

Result CWavContainerReader::SetProperties(CAudioReaderProperties* properties, CWindowsAudioFormat* format) {
  if (!properties || !format) return ResultArgumentNull();
  RObject<CAudioProperties> described(new CAudioProperties());
  Result result = format->GetProperties(described.Get());
  if (result.Succeeded()) result = properties->SetFormat(From, described->GetFormat());
  if (result.Succeeded()) result = properties->SetSampleRate(From, described->GetSampleRate());
  if (result.Succeeded()) result = properties->SetChannels(From, described->GetChannels());
  if (result.Succeeded()) result = properties->SetBitsPerSample(From, described->GetBitsPerSample());
  if (result.Succeeded()) result = properties->SetBytesPerFrame(From, format->GetBlockAlignment());
  if (result.Succeeded()) result = properties->SetBytesPerPacket(From, format->GetBlockAlignment());
  if (result.Succeeded()) result = properties->SetFramesPerPacket(From, described->GetFramesPerPacket());
  if (result.Succeeded()) result = properties->SetBitRate(From, described->GetBitRate());
  // Times count audio frames: one frame per unit of the sample rate.
  if (result.Succeeded()) result = properties->SetSampleDuration(1);
  for (int channel = 0; channel < described->GetChannels() && result.Succeeded(); ++channel)
    result = properties->SetChannelLabel(From, channel, described->GetChannelLabel(channel));
  return result;
}

Result CWavContainerReader::ReadChunks(CWaveList*& list) {
  list = nullptr;
  CAutoLock lock(stream_);
  Result result = reader_->Seek(0, SeekOrigin::Begin, nullptr);
  if (result.Failed()) return result;
  RObject<CWaveList> chunks(new CWaveList());
  result = chunks->Read(reader_);
  if (result.Failed()) return result;
  list = chunks.Detach();
  return Result();
}

Result CWavContainerReader::GetDataSize(CWaveList* list, long long& size) const {
  const CWaveData* data = FindChunk<CWaveData>(list);
  size = data->GetHeaderSize();
  if (data->GetHeaderSize() == CWaveChunk::SizeInDataSize64) {
    const CWaveDataSize64* sizes = FindChunk<CWaveDataSize64>(list);
    if (!sizes) return ResultError("missing 'ds64' chunk");
    size = sizes->GetChunkSize(CWaveData::TypeCode);
  }
  const long long available = std::max(0ll, stream_->GetLength() - data->GetEssencePosition());
  if (size < 0 || size > available) {
    // A file cut short (or a size that lies) keeps the essence it holds.
    MOX_LOG(2, "'data' chunk of %lld bytes holds %lld; the track is shortened\n", size, available);
    CVariance::Report(data->GetPosition(), CVariance::Major, "'data' chunk of %lld bytes holds %lld\n", size,
                      available);
    size = available;
  }
  return Result();
}

Result CWavContainerReader::DescribeMpeg(CWaveList* list) {
  unsigned char bytes[CMpegAudioHeader::Size];
  int read = 0;
  {
    CAutoLock lock(stream_);
    Result result = ReadUncached(stream_, essenceStart_, bytes, sizeof(bytes), read);
    if (result.Failed()) return result;
  }
  RObject<CMpegAudioHeader> header(new CMpegAudioHeader());
  if (read == CMpegAudioHeader::Size && header->Parse(bytes).Succeeded()) {
    Result result = properties_->SetFormat(From, FourCC("mpga"));
    if (result.Succeeded()) result = properties_->SetSampleRate(From, header->GetSampleRate());
    if (result.Succeeded()) result = properties_->SetChannels(From, header->GetChannels());
    if (result.Succeeded()) result = properties_->SetBitRate(From, header->GetBitRate());
    if (result.Succeeded()) result = properties_->SetFramesPerPacket(From, header->GetSamplesPerFrame());
    if (result.Failed()) return result;
  }
  const CWaveFact* fact = FindChunk<CWaveFact>(list);
  frames_ = fact ? fact->GetSamples() : 0;
  return Result();
}

Result CWavContainerReader::DescribeEssence(CWaveList* list) {
  const unsigned int format = properties_->GetFormat();
  const int index = IndexOfFormat(format);
  kind_ = Kind::None;
  if (index == FormatCount - 1 || AudioFormat::IsFormat(format, FourCC("mpga"))) {
    kind_ = Kind::Mpeg;
    return DescribeMpeg(list);
  }
  if (index < 0) return Result();
  long long size = 0;
  Result result = GetDataSize(list, size);
  if (result.Failed()) return result;
  essenceEnd_ = essenceStart_ + size;
  if (index >= BlockCodecs) {
    kind_ = Kind::Pcm;
    const int bytesPerFrame = properties_->GetBytesPerFrame();
    frames_ = bytesPerFrame > 0 ? size / bytesPerFrame : 0;
    return Result();
  }
  kind_ = Kind::Block;
  const int bytesPerPacket = properties_->GetBytesPerPacket();
  frames_ = bytesPerPacket > 0 ? size / bytesPerPacket * properties_->GetFramesPerPacket() : 0;
  return Result();
}

Result CWavContainerReader::DescribeTrack(CWaveList* list) {
  const CWaveFormat* chunk = FindChunk<CWaveFormat>(list);
  if (!chunk) return ResultError("missing 'fmt ' chunk");
  RObject<CWindowsAudioFormat> format(chunk->GetWindowsAudioFormat());
  Result result = SetProperties(properties_, format.Get());
  if (result.Failed()) return ResultFormatError(result, "unsupported 'fmt ' values");
  const CWaveData* data = FindChunk<CWaveData>(list);
  if (!data) return ResultError("missing 'data' chunk");
  essenceStart_ = data->GetEssencePosition();
  essenceEnd_ = essenceStart_;
  frames_ = 0;
  result = DescribeEssence(list);
  if (result.Failed()) return result;
  if (kind_ == Kind::Block) {
    // The decoder is built from the structure as the file has it.
    RObject<CByteArray> bytes(format->ToByteArray());
    RObject<CDecoderBufferProperties> buffer(new CDecoderBufferProperties(bytes.Get()));
    properties_->AddExtension(buffer.Get());
  }
  return Result();
}

void CWavContainerReader::AttachExtensions(CWaveList* list) {
  CWaveAxml* axml = FindChunk<CWaveAxml>(list);
  CAdmChannelAllocation* chna = FindChunk<CAdmChannelAllocation>(list);
  if (axml && chna) {
    RObject<CByteArray> bytes(axml->GetDocument());
    RObject<CAdmDocument> document(new CAdmDocument());
    if (bytes && document->Deserialize(bytes.Get()).Succeeded()) {
      RObject<CAdmProperties> adm(new CAdmProperties(document.Get(), chna));
      properties_->AddExtension(adm.Get());
    } else {
      MOX_LOG(2, "the 'axml' document does not parse; it is skipped\n");
    }
  }
  CWaveBroadcastExtension* bext = FindChunk<CWaveBroadcastExtension>(list);
  if (bext) {
    RObject<CBwfProperties> bwf(new CBwfProperties(bext));
    CWaveIxml* ixml = FindChunk<CWaveIxml>(list);
    RObject<CByteArray> bytes(ixml ? ixml->GetDocument() : nullptr);
    RObject<CBwfDocument> document(new CBwfDocument());
    CTimeCode timeCode;
    if (bytes && document->Deserialize(bytes.Get()).Succeeded()) {
      bwf->SetDocument(document.Get());
      if (document->GetTimeCode(timeCode).Succeeded()) {
        RObject<CAudioTimeCodeProperties> atc(new CAudioTimeCodeProperties(timeCode, document->GetTimeCodeRate()));
        properties_->AddExtension(atc.Get());
      }
    }
    properties_->AddExtension(bwf.Get());
  }
  CDolbyAudioMetadata* dbmd = FindChunk<CDolbyAudioMetadata>(list);
  if (dbmd) {
    RObject<CDolbyAudioProperties> dolby(new CDolbyAudioProperties(dbmd));
    properties_->AddExtension(dolby.Get());
  }
}

Result CWavContainerReader::BeginIndex() {
  if (stream_) return ResultFalse();
  Result result = OpenStream(stream_);
  if (result.Failed()) return result;
  reader_ = new CBinaryReader(stream_);
  RObject<CWaveList> list;
  result = ReadChunks(list.Out());
  if (properties_) properties_->Release();
  properties_ = new CAudioReaderProperties();
  if (result.Succeeded()) result = DescribeTrack(list.Get());
  if (result.Succeeded() && kind_ == Kind::Pcm) AnalyzeChannelCoding();
  if (result.Succeeded()) result = properties_->SetDuration(From, frames_);
  if (result.Failed()) {
    MOX_LOG(2, "unable to index: %s\n", result.GetDetails() ? result.GetDetails() : result.GetErrorMessage());
    properties_->Release();
    properties_ = nullptr;
    Close();
    SynchronizeVariances();
    return result;
  }
  AttachExtensions(list.Get());
  delivered_ = 0;
  SynchronizeVariances();
  SetReady(true);
  return Result();
}

Result CWavContainerReader::EndIndex() {
  SetReady(false);
  Close();
  return Result();
}

Result CWavContainerReader::AnalyzeChannelCoding() {
  if (!properties_) return ResultInvalidOperation("no track");
  RObject<CContainerAnalyzer> analyzer(CContainerAnalyzer::Create(this, CAudioChannelCodingAnalyzer::TypeCode));
  Result result = analyzer ? analyzer->Begin(0, properties_) : ResultNotSupported();
  if (result.Failed()) return Result();  // nothing to analyze in this format
  while (analyzer->WantsMore()) {
    RObject<CAudioSample> sample;
    result = ReadPcmAudioSample(sample.Out());
    if (result.Failed() || !sample) break;
    result = analyzer->Analyze(sample.Get());
    if (result.Failed()) break;
  }
  delivered_ = 0;
  // What the samples carry is the essence's word on each channel's coding.
  RObject<CAudioProperties> found(new CAudioProperties());
  result = analyzer->End(found);
  for (int channel = 0; channel < properties_->GetChannels() && result.Succeeded(); ++channel) {
    const unsigned int coding = found->GetChannelCoding(channel);
    if (coding) result = properties_->SetChannelCoding(CMediaReader::Essence, channel, coding);
  }
  return result;
}

CAudioProperties* CWavContainerReader::GetTrack() const { return properties_; }

CAudioSample* CWavContainerReader::CreateSample(long long count, long long position, long long length) const {
  CAudioSample* sample = new CAudioSample(count);
  sample->SetTime(delivered_);
  RObject<CContainerDataReference> reference(
      new CContainerDataReference(CContainerDataReference::TypeCode, position, static_cast<int>(length)));
  sample->SetDataReference(reference.Get());
  return sample;
}

Result CWavContainerReader::ReadPcmAudioSample(CAudioSample*& sample) {
  sample = nullptr;
  const long long bytesPerPacket = properties_->GetBytesPerPacket();
  if (bytesPerPacket <= 0) return Result();
  // A second of audio, but never more bytes than one sample may hold (a
  // damaged header can claim any rate).
  const long long count =
      std::min({properties_->GetTimeScale(), frames_ - delivered_, std::max(1ll, MaximumSampleBytes / bytesPerPacket)});
  if (count <= 0) return Result();
  sample = CreateSample(count, essenceStart_ + delivered_ * bytesPerPacket, bytesPerPacket * count);
  delivered_ += count;
  return Result();
}

Result CWavContainerReader::ReadAdpcmAudioSample(CAudioSample*& sample) {
  sample = nullptr;
  const long long framesPerPacket = properties_->GetFramesPerPacket();
  const long long bytesPerPacket = properties_->GetBytesPerPacket();
  if (framesPerPacket <= 0 || bytesPerPacket <= 0) return Result();
  // Codecs whose packet is a single frame (G.711) go out a second at a time
  // like PCM: a sample per frame would cost more than the audio is worth.
  const long long packets = framesPerPacket == 1 ? std::max<long long>(1, properties_->GetTimeScale()) : 1;
  const long long count = std::min(framesPerPacket * packets, frames_ - delivered_);
  if (count <= 0) return Result();
  const long long bytes = (count + framesPerPacket - 1) / framesPerPacket * bytesPerPacket;
  sample = CreateSample(count, essenceStart_ + delivered_ / framesPerPacket * bytesPerPacket, bytes);
  delivered_ += count;
  return Result();
}

Result CWavContainerReader::ReadMpegAudioSample(CAudioSample*& sample) {
  sample = nullptr;
  unsigned char bytes[CMpegAudioHeader::Size];
  int read = 0;
  Result result = ReadUncached(stream_, essenceStart_, bytes, sizeof(bytes), read);
  if (result.Failed() || read < CMpegAudioHeader::Size) return Result();
  RObject<CMpegAudioHeader> header(new CMpegAudioHeader());
  // Anything but a frame header ends the track quietly.
  if (header->Parse(bytes).Failed() || header->GetFrameLength() <= CMpegAudioHeader::Size) return Result();
  sample = CreateSample(header->GetSamplesPerFrame(), essenceStart_, header->GetFrameLength());
  essenceStart_ += header->GetFrameLength();
  delivered_ += header->GetSamplesPerFrame();
  return Result();
}

Result CWavContainerReader::ReadAudioSample(int track, CAudioSample*& sample) {
  sample = nullptr;
  if (track != 0 || !properties_) return ResultIndexOutOfRange();
  if (!stream_) return ResultInvalidOperation("the reader is not indexing");
  CAutoLock lock(stream_);
  switch (kind_) {
    case Kind::Pcm: return ReadPcmAudioSample(sample);
    case Kind::Block: return ReadAdpcmAudioSample(sample);
    case Kind::Mpeg: return ReadMpegAudioSample(sample);
    default: return Result();
  }
}

CProperties* CWavContainerReader::GetDocumentation() const {
  return IPropertiesDocumentation::GetDocumentationT<ContainerProperty::WavContainerReader>();
}

}  // namespace Corvane::Mox
