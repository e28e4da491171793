#include "System/Media/Container/WavContainerWriter.h"

#include <iterator>

#include "System/ByteArray.h"
#include "System/Collections/Value.h"
#include "System/FourString.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/Stream.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Formats/AudioFormat.h"
#include "System/Media/LockedDataReference.h"
#include "System/Console.h"
#include "System/Media/Wav/AdmChannelAllocation.h"
#include "System/Media/Wav/AdmDocument.h"
#include "System/Media/Wav/AdmProperties.h"
#include "System/Media/Wav/BwfDocument.h"
#include "System/Media/Wav/BwfProperties.h"
#include "System/Media/Wav/DolbyAudioProperties.h"
#include "System/Media/Wav/WaveAxml.h"
#include "System/Media/Wav/WaveByteChunk.h"
#include "System/Media/Wav/WaveIxml.h"
#include "System/Media/Wav/WaveBroadcastExtension.h"
#include "System/Media/Wav/WaveChunk.h"
#include "System/Media/Wav/WaveData.h"
#include "System/Media/Wav/WaveDataSize64.h"
#include "System/Media/Wav/WaveFact.h"
#include "System/Media/Wav/WaveFormat.h"
#include "System/Media/Wav/WaveList.h"
#include "System/PropertiesDocumentation.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

namespace {

using Settings = ContainerProperty::WavContainerWriter;
using Metadata = ContainerProperty::WavMetadata;

// "JUNK" holds exactly a "ds64" payload without table entries, so that one
// can replace the other in place.
constexpr unsigned int JunkId = FourCC("JUNK");
constexpr unsigned int JunkSize = CWaveDataSize64::FixedSize;

bool IsPcm(unsigned int tag) {
  return tag == CWindowsAudioFormat::FormatPcm || tag == CWindowsAudioFormat::FormatIeeeFloat;
}

unsigned int PcmOfWidth(int bits) {
  switch (bits) {
    case 16: return FourCC("sowt");
    case 20: return FourCC("02ni");
    case 24: return FourCC("42ni");
    default: return FourCC("dlbe");
  }
}

// A text setting of the bag, acquired; null when unset or not text.
CString* GetText(const CProperties* bag, const PropertyName& name) {
  CString* text = nullptr;
  if (bag->GetProperty(name, text).Failed()) return nullptr;
  return text;
}

// The codes a WAVE format structure expresses, then Dolby E, which travels
// as PCM of its word size.
constexpr unsigned int kFormats[] = {
    FourCC("raw "), FourCC("sowt"), FourCC("02ni"), FourCC("42ni"), FourCC("23ni"), FourCC("23lf"), FourCC("46lf"),
    FourCC("alaw"), FourCC("ulaw"), CWindowsAudioFormat::MicrosoftPrefix | CWindowsAudioFormat::FormatAlaw,
    CWindowsAudioFormat::MicrosoftPrefix | CWindowsAudioFormat::FormatMulaw, FourCC("dlbe"),
};

}  // namespace

CWavContainerWriter::CWavContainerWriter()
    : CContainerWriter(ComponentCode), junkPosition_(0), factPosition_(0), dataPosition_(0), dataSize_(0), rf64_(false) {}

CWavContainerWriter::~CWavContainerWriter() { CloseOutput(); }

CFormatList* CWavContainerWriter::GetAudioFormats() const {
  return NewFormatList(kFormats, static_cast<int>(std::size(kFormats)));
}

int CWavContainerWriter::GetAudioMediaCount() const { return properties_ ? 1 : 0; }

CAudioProperties* CWavContainerWriter::GetAudioProperties(int track) const {
  return track == 0 && properties_ ? new CAudioProperties(properties_) : nullptr;
}

Result CWavContainerWriter::CreateFormat(CWindowsAudioFormat*& format) const {
  format = nullptr;
  const unsigned int code = properties_->GetFormat();
  RObject<CWindowsAudioFormat> created(new CWindowsAudioFormat());
  Result result = created->SetProperties(properties_, false);
  if (result.Failed()) {
    RObject<CString> name(FourString::ToString(code));
    return ResultNotSupported("audio format '%s' cannot be written to WAV; add an audio converter to PCM",
                              name ? name->GetChars() : "");
  }
  const int bits = created->GetValidBitsPerSample();
  const bool extensible = GetBoolSetting(Settings::ExtensibleFormat) || properties_->GetChannels() > 2 ||
                          (bits > 16 && IsPcm(created->GetFormat()));
  if (extensible) result = created->SetProperties(properties_, true);
  if (result.Failed()) return result;
  format = created.Detach();
  return Result();
}

Result CWavContainerWriter::AddAudioMedia(CAudioProperties* properties) {
  if (!properties) return ResultArgumentNull();
  if (properties_) return ResultNotSupported("the format holds one audio track");
  properties_ = new CAudioProperties(properties);
  // Dolby E travels as little-endian PCM of its word size.
  if (properties_->GetFormat() == FourCC("dlbe")) properties_->SetFormat(PcmOfWidth(properties_->GetBitsPerSample()));
  RObject<CWindowsAudioFormat> format;
  Result result = CreateFormat(format.Out());
  if (result.Failed()) properties_.Clear();
  return result;
}

bool CWavContainerWriter::GetBoolSetting(const PropertyName& name) const {
  bool value = false;
  if (GetProperty(name, value).GetResultCode() == 0) return value;
  int number = 0;
  return GetProperty(name, number).GetResultCode() == 0 && number != 0;
}

Result CWavContainerWriter::CreateBroadcastExtension(CWaveBroadcastExtension*& extension) const {
  extension = nullptr;
  RObject<CWaveBroadcastExtension> bext(new CWaveBroadcastExtension());
  RObject<CMediaPropertiesExtension> track(properties_->GetExtension(CBwfProperties::TypeCode));
  RObject<CWaveBroadcastExtension> source(
      track ? static_cast<CBwfProperties*>(track.Get())->GetBroadcastExtension() : nullptr);
  if (source) {
    RObject<CString> texts[] = {source->GetDescription(), source->GetOriginator(), source->GetOriginatorReference(),
                                source->GetOriginationDate(), source->GetOriginationTime()};
    bext->SetDescription(texts[0].Get());
    bext->SetOriginator(texts[1].Get());
    bext->SetOriginatorReference(texts[2].Get());
    bext->SetOriginationDate(texts[3].Get());
    bext->SetOriginationTime(texts[4].Get());
    RObject<CByteArray> umid(source->GetUmid());
    bext->SetUmid(umid.Get());
    RObject<CByteArray> history(source->GetCodingHistory());
    bext->SetCodingHistory(history.Get());
    bext->SetTimeReference(source->GetTimeReference());
  }
  // Settings of the writer win over what the track brought.
  const struct {
    const PropertyName* name;
    Result (CWaveBroadcastExtension::*set)(CString*);
  } fields[] = {{&Metadata::Description, &CWaveBroadcastExtension::SetDescription},
                {&Metadata::Originator, &CWaveBroadcastExtension::SetOriginator},
                {&Metadata::OriginatorReference, &CWaveBroadcastExtension::SetOriginatorReference},
                {&Metadata::OriginationDate, &CWaveBroadcastExtension::SetOriginationDate},
                {&Metadata::OriginationTime, &CWaveBroadcastExtension::SetOriginationTime},
                {&Metadata::CodingHistory, &CWaveBroadcastExtension::SetCodingHistory}};
  for (const auto& field : fields) {
    RObject<CString> text(GetText(this, *field.name));
    if (text) ((*bext).*field.set)(text.Get());
  }
  RObject<CString> umid(GetText(this, Metadata::Umid));
  RObject<CByteArray> umidBytes;
  if (umid && CByteArray::FromHexString(umid->GetChars(), umidBytes.Out()).Succeeded()) bext->SetUmid(umidBytes.Get());
  // An absent setting answers ResultFalse, which is no value.
  long long timeReference = 0;
  if (GetProperty(Metadata::TimeReference, timeReference).GetResultCode() == 0)
    bext->SetTimeReference(static_cast<unsigned long long>(timeReference));
  extension = bext.Detach();
  return Result();
}

namespace {

// Whether every entry of a "chna" payload names a track this file has: the
// allocation is a count of tracks, a count of entries, then 40-byte entries
// that start with their 1-based track index.
bool AllocationFits(CByteArray* allocation, int channels) {
  if (!allocation || allocation->GetLength() < 4) return false;
  const int entries = allocation->GetData(2) | allocation->GetData(3) << 8;
  if (allocation->GetLength() < 4 + entries * 40) return false;
  for (int i = 0; i < entries; ++i) {
    const int track = allocation->GetData(4 + i * 40) | allocation->GetData(5 + i * 40) << 8;
    if (track < 1 || track > channels) return false;
  }
  return true;
}

}  // namespace

Result CWavContainerWriter::WriteChunk(unsigned int id, CByteArray* payload) {
  RObject<CWaveByteChunk> chunk(new CWaveByteChunk(id));
  chunk->SetDocument(payload);
  return chunk->Write(writer_);
}

Result CWavContainerWriter::WriteCarriedMetadata() {
  Result result;
  RObject<CMediaPropertiesExtension> bwf(properties_->GetExtension(CBwfProperties::TypeCode));
  RObject<CBwfDocument> timeCode(bwf ? static_cast<CBwfProperties*>(bwf.Get())->GetDocument() : nullptr);
  if (timeCode && GetBoolSetting(Settings::IncludeBroadcastExtension)) {
    RObject<CByteArray> xml;
    if (timeCode->Serialize(xml.Out(), 0).Succeeded()) result = WriteChunk(CWaveIxml::TypeCode, xml);
  }
  // The ADM document describes the audio channel by channel; it is written
  // only where its allocation still names tracks of this file.
  RObject<CMediaPropertiesExtension> adm(properties_->GetExtension(CAdmProperties::TypeCode));
  if (adm && result.Succeeded()) {
    auto* model = static_cast<CAdmProperties*>(adm.Get());
    RObject<CAdmChannelAllocation> chna(model->GetChannelAllocation());
    RObject<CByteArray> allocation(chna ? chna->GetDocument() : nullptr);
    RObject<CAdmDocument> document(model->GetDocument());
    RObject<CByteArray> xml;
    if (!AllocationFits(allocation, properties_->GetChannels())) {
      MOX_LOG(2, "the ADM channel allocation names tracks this file does not have; 'chna' and 'axml' are left out\n");
    } else if (document && document->Serialize(xml.Out(), 0).Succeeded()) {
      result = WriteChunk(CAdmChannelAllocation::TypeCode, allocation);
      if (result.Succeeded()) result = WriteChunk(CWaveAxml::TypeCode, xml);
    }
  }
  RObject<CMediaPropertiesExtension> dolby(properties_->GetExtension(CDolbyAudioProperties::TypeCode));
  RObject<CByteArray> dbmd(dolby ? static_cast<CDolbyAudioProperties*>(dolby.Get())->GetBytes() : nullptr);
  if (dbmd && result.Succeeded()) result = WriteChunk(CDolbyAudioProperties::TypeCode, dbmd);
  return result;
}

Result CWavContainerWriter::WriteHeaders() {
  RObject<CWindowsAudioFormat> format;
  Result result = CreateFormat(format.Out());
  if (result.Failed()) return result;
  rf64_ = GetBoolSetting(Settings::ForceRf64);
  // The outer header: sizes are patched at the end.
  result = writer_->WriteFour(rf64_ ? CWaveList::Rf64Id : CWaveList::RiffId);
  if (result.Succeeded()) result = writer_->WriteInt32(-1);
  if (result.Succeeded()) result = writer_->WriteFour(CWaveList::WaveId);
  junkPosition_ = writer_->GetPosition();
  if (rf64_) {
    RObject<CWaveDataSize64> sizes(new CWaveDataSize64());
    if (result.Succeeded()) result = sizes->Write(writer_);
  } else {
    const unsigned char zeros[JunkSize] = {};
    if (result.Succeeded()) result = writer_->WriteFour(JunkId);
    if (result.Succeeded()) result = writer_->WriteInt32(static_cast<int>(JunkSize));
    if (result.Succeeded()) result = writer_->WriteBytes(zeros, JunkSize);
  }
  RObject<CWaveFormat> fmt(new CWaveFormat(format.Get()));
  if (result.Succeeded()) result = fmt->Write(writer_);
  factPosition_ = 0;
  if (result.Succeeded() && !IsPcm(format->GetFormat())) {
    // Coded formats carry their frame count in "fact".
    factPosition_ = writer_->GetPosition();
    RObject<CWaveFact> fact(new CWaveFact(0));
    result = fact->Write(writer_);
  }
  if (result.Succeeded() && GetBoolSetting(Settings::IncludeBroadcastExtension)) {
    RObject<CWaveBroadcastExtension> bext;
    result = CreateBroadcastExtension(bext.Out());
    if (result.Succeeded()) result = bext->Write(writer_);
  }
  if (result.Succeeded()) result = WriteCarriedMetadata();
  dataPosition_ = writer_->GetPosition();
  RObject<CWaveData> data(new CWaveData());
  data->SetHeaderSize(rf64_ ? CWaveChunk::SizeInDataSize64 : 0);
  if (result.Succeeded()) result = data->Write(writer_);
  return result;
}

Result CWavContainerWriter::BeginIndex() {
  if (!properties_) return ResultInvalidOperation("no audio track");
  if (stream_) return ResultFalse();
  Result result = OpenStream(stream_.Out());
  if (result.Failed()) return result;
  writer_ = new CBinaryWriter(stream_.Get());
  dataSize_ = 0;
  result = WriteHeaders();
  if (result.Failed()) CloseOutput();
  return result;
}

Result CWavContainerWriter::WriteAudioSample(int track, CAudioSample* sample) {
  if (!sample) return Result();
  if (track != 0 || !properties_) return ResultIndexOutOfRange();
  if (!stream_) return ResultInvalidOperation("the writer has not begun");
  RObject<CLockedDataReference> data;
  Result result = LockSampleData(sample, data.Out());
  if (result.Failed()) return result;
  const int length = data->GetLength();
  int written = 0;
  // The essence goes to the stream as it is: no per-value work.
  result = stream_->Write(data->GetData(), length, &written);
  dataSize_ += written;
  if (result.Succeeded() && written != length) result = ResultIOError("wrote %d of %d bytes", written, length);
  return result;
}

Result CWavContainerWriter::PatchRiff(long long fileSize, long long dataSize) {
  Result result = writer_->Seek(4, SeekOrigin::Begin, nullptr);
  if (result.Succeeded()) result = writer_->WriteInt32(static_cast<int>(fileSize - 8));
  if (result.Succeeded()) result = writer_->Seek(dataPosition_ + 4, SeekOrigin::Begin, nullptr);
  if (result.Succeeded()) result = writer_->WriteInt32(static_cast<int>(dataSize));
  return result;
}

Result CWavContainerWriter::PatchRf64(long long fileSize, long long dataSize) {
  const int bytesPerFrame = properties_->GetBytesPerFrame();
  RObject<CWaveDataSize64> sizes(new CWaveDataSize64());
  sizes->SetRiffSize(fileSize - 8);
  sizes->SetDataSize(dataSize);
  sizes->SetSampleCount(bytesPerFrame > 0 ? dataSize / bytesPerFrame : 0);
  Result result = writer_->Seek(0, SeekOrigin::Begin, nullptr);
  if (result.Succeeded()) result = writer_->WriteFour(CWaveList::Rf64Id);
  if (result.Succeeded()) result = writer_->WriteInt32(-1);
  if (result.Succeeded()) result = writer_->Seek(junkPosition_, SeekOrigin::Begin, nullptr);
  if (result.Succeeded()) result = sizes->Write(writer_);
  if (result.Succeeded()) result = writer_->Seek(dataPosition_ + 4, SeekOrigin::Begin, nullptr);
  if (result.Succeeded()) result = writer_->WriteInt32(-1);
  return result;
}

Result CWavContainerWriter::EndIndex() {
  if (!stream_) return ResultFalse();
  Result result;
  // An odd essence is followed by its pad byte.
  if (dataSize_ & 1) result = writer_->WriteByte(0);
  const long long fileSize = writer_->GetPosition();
  long long threshold = DefaultRf64Threshold;
  if (GetProperty(Settings::Rf64Threshold, threshold).GetResultCode() != 0 || threshold <= 0)
    threshold = DefaultRf64Threshold;
  if (result.Succeeded()) {
    if (!rf64_ && fileSize - 8 >= threshold) rf64_ = true;
    result = rf64_ ? PatchRf64(fileSize, dataSize_) : PatchRiff(fileSize, dataSize_);
  }
  if (result.Succeeded() && factPosition_) {
    const int bytesPerFrame = properties_->GetBytesPerFrame();
    const long long frames = bytesPerFrame > 0 ? dataSize_ / bytesPerFrame : 0;
    result = writer_->Seek(factPosition_ + 8, SeekOrigin::Begin, nullptr);
    if (result.Succeeded()) result = writer_->WriteInt32(frames > 0xFFFFFFFFll ? -1 : static_cast<int>(frames));
  }
  if (result.Succeeded()) result = writer_->Seek(fileSize, SeekOrigin::Begin, nullptr);
  Result flushed = stream_->Flush();
  CloseOutput();
  return result.Failed() ? result : flushed;
}

void CWavContainerWriter::CloseOutput() {
  if (writer_) {
    writer_->Close();
    writer_.Clear();
  }
  if (stream_) {
    stream_->Close();
    stream_.Clear();
  }
}

CProperties* CWavContainerWriter::GetDocumentation() const {
  return IPropertiesDocumentation::GetDocumentationT<ContainerProperty::WavContainerWriter>();
}

}  // namespace Corvane::Mox
