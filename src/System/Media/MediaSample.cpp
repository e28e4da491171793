#include "System/Media/MediaSample.h"

#include "System/ByteArray.h"
#include "System/FourString.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/Media/Analysis.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MediaBinary.h"
#include "System/Media/Metadata/Metadata.h"
#include "System/Media/MultipleDataReference.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Video/VideoSample.h"

namespace Corvane::Mox {

namespace {

// Replaces an owned reference, acquiring the new target first.
template <class T>
void Assign(T*& slot, T* value) {
  if (value) value->Acquire();
  T* old = slot;
  slot = value;
  if (old) old->Release();
}

template <class T>
T* Acquired(T* value) {
  if (value) value->Acquire();
  return value;
}

}  // namespace

CMediaSample::CMediaSample(unsigned int tag, long long duration)
    : CPoolObject(tag),
      duration_(duration),
      hint_(0),
      time_(0),
      dataReference_(nullptr),
      metadata_(nullptr),
      analysis_(nullptr),
      userData_(nullptr) {}

CMediaSample::CMediaSample(unsigned int tag, const CMediaSample* source)
    : CPoolObject(tag),
      IProperties(source),
      duration_(source->duration_),
      hint_(source->hint_),
      time_(source->time_),
      trim_(source->trim_),
      dataReference_(Acquired(source->dataReference_)),
      metadata_(nullptr),
      analysis_(Acquired(source->analysis_)),
      userData_(Acquired(source->userData_)) {
  if (source->metadata_) {
    metadata_ = new CMetadata();
    metadata_->Copy(source->metadata_).ThrowIfFailed();
  }
}

CMediaSample::~CMediaSample() {
  Assign<CDataReference>(dataReference_, nullptr);
  Assign<CMetadata>(metadata_, nullptr);
  Assign<CAnalysis>(analysis_, nullptr);
  Assign<CObject>(userData_, nullptr);
}

bool CMediaSample::IsType(unsigned int type) const { return CObject::IsType(type); }

CMediaSample* CMediaSample::New(unsigned int tag) {
  switch (tag) {
    case CVideoSample::TypeCode:
      return new CVideoSample(0, 0, 0);
    case CAudioSample::TypeCode:
      return new CAudioSample(0LL);
    case CSubtitleSample::TypeCode:
      return new CSubtitleSample(0LL);
    default:
      return nullptr;
  }
}

CMediaSample* CMediaSample::Clone(const CMediaSample* sample) {
  if (!sample) return nullptr;
  switch (sample->GetType()) {
    case CVideoSample::TypeCode:
      return new CVideoSample(static_cast<const CVideoSample*>(sample));
    case CAudioSample::TypeCode:
      return new CAudioSample(static_cast<const CAudioSample*>(sample));
    case CSubtitleSample::TypeCode:
      return new CSubtitleSample(static_cast<const CSubtitleSample*>(sample));
    default:
      return nullptr;
  }
}

void CMediaSample::ReclaimCleanUp() {
  ClearProperties();
  if (dataReference_ && dataReference_->IsType(FourCC("dram"))) {
    // Memory is what pooling exists to keep; a buffer starts empty again.
    if (dataReference_->IsType(FourCC("byte"))) dataReference_->SetLength(0);
  } else {
    Assign<CDataReference>(dataReference_, nullptr);
  }
  Assign<CMetadata>(metadata_, nullptr);
  Assign<CObject>(userData_, nullptr);
  // The analysis is deliberately kept: analyzers reuse it across samples.
  duration_ = 0;
  hint_ = 0;
  time_ = 0;
  trim_ = Range<int>();
}

long long CMediaSample::GetCompositionTime() const { return time_; }

int CMediaSample::GetSize() const {
  int size = dataReference_ ? dataReference_->GetSize() + 44 : 40;
  if (metadata_) size += metadata_->GetLength() + 4;
  size += analysis_ ? analysis_->GetLength() + 8 : 4;
  return size + GetExtraSize();
}

Result CMediaSample::Write(CBinaryWriter* writer, int version) const {
  if (!writer) return ResultArgumentNull();
  Result r = writer->WriteFour(GetType());
  if (r.Succeeded()) r = writer->WriteInt32(GetSize());
  if (r.Succeeded()) r = writer->WriteInt32(version);
  if (r.Succeeded()) r = writer->WriteInt64(duration_);
  if (r.Succeeded()) r = writer->WriteInt32(hint_);
  if (r.Succeeded()) r = writer->WriteInt64(time_);
  if (r.Succeeded()) r = writer->WriteInt32(trim_.head);
  if (r.Succeeded()) r = writer->WriteInt32(trim_.tail);
  if (r.Failed()) return r;
  if (!dataReference_) {
    r = writer->WriteFour(0);
  } else {
    r = writer->WriteFour(dataReference_->GetType());
    if (r.Succeeded()) r = writer->WriteInt32(dataReference_->GetSize());
    if (r.Succeeded()) r = dataReference_->Write(writer);
  }
  if (r.Failed()) return r;
  if (!metadata_) {
    r = writer->WriteFour(0);
  } else {
    r = writer->WriteFour(CMetadata::TypeCode);
    if (r.Succeeded()) r = writer->WriteInt32(metadata_->GetLength());
    if (r.Succeeded()) r = metadata_->Write(writer);
  }
  if (r.Failed()) return r;
  if (!analysis_) {
    r = writer->WriteFour(0);
  } else {
    r = writer->WriteFour(CAnalysis::TypeCode);
    if (r.Succeeded()) r = writer->WriteInt32(analysis_->GetLength());
    if (r.Succeeded()) r = analysis_->Write(writer);
  }
  return r.Failed() ? r : WriteExtra(writer);
}

// Reads the layout Write produces after the sample's tag.
Result CMediaSample::Read(CBinaryReader* reader, int& version) {
  if (!reader) return ResultArgumentNull();
  int size = 0;
  Range<int> trim;
  long long duration = 0;
  long long time = 0;
  int hint = 0;
  Result r = reader->ReadInt32(&size);
  if (r.Succeeded()) r = reader->ReadInt32(&version);
  if (r.Succeeded()) r = reader->ReadInt64(&duration);
  if (r.Succeeded()) r = reader->ReadInt32(&hint);
  if (r.Succeeded()) r = reader->ReadInt64(&time);
  if (r.Succeeded()) r = reader->ReadInt32(&trim.head);
  if (r.Succeeded()) r = reader->ReadInt32(&trim.tail);
  unsigned int tag = 0;
  if (r.Succeeded()) r = reader->ReadFour(&tag);
  if (r.Failed()) return r;
  RObject<CDataReference> reference;
  if (tag) {
    reference = CDataReference::New(tag);
    if (!reference) return ResultNullPointer("failed to create new data reference '%s'", FourString(tag).GetChars());
    int referenceSize = 0;
    r = reader->ReadInt32(&referenceSize);
    if (r.Succeeded()) r = reference->Read(reader);
    if (r.Failed()) return r;
  }
  RObject<CMetadata> metadata;
  r = reader->ReadFour(&tag);
  if (r.Succeeded() && tag) {
    if (tag != CMetadata::TypeCode) return ResultFormatError("unexpected metadata tag '%s'", FourString(tag).GetChars());
    int length = 0;
    metadata = new CMetadata();
    r = reader->ReadInt32(&length);
    if (r.Succeeded()) r = metadata->Read(reader);
  }
  if (r.Failed()) return r;
  RObject<CAnalysis> analysis;
  r = reader->ReadFour(&tag);
  if (r.Succeeded() && tag) {
    if (tag != CAnalysis::TypeCode) return ResultFormatError("unexpected analysis tag '%s'", FourString(tag).GetChars());
    int length = 0;
    analysis = new CAnalysis();
    r = reader->ReadInt32(&length);
    if (r.Succeeded()) r = analysis->Read(reader, length);
  }
  if (r.Succeeded()) r = ReadExtra(reader);
  if (r.Failed()) return r;
  duration_ = duration;
  hint_ = hint;
  time_ = time;
  trim_ = trim;
  Assign<CDataReference>(dataReference_, reference.Get());
  Assign<CMetadata>(metadata_, metadata.Get());
  Assign<CAnalysis>(analysis_, analysis.Get());
  return Result();
}

Result CMediaSample::ReadSample(CBinaryReader* reader, CMediaSample*& sample, int& version) {
  sample = nullptr;
  if (!reader) return ResultArgumentNull();
  unsigned int tag = 0;
  Result r = reader->ReadFour(&tag);
  if (r.Failed()) return r;
  RObject<CMediaSample> result(New(tag));
  if (!result) return ResultFormatError("unknown sample tag '%s'", FourString(tag).GetChars());
  r = result->Read(reader, version);
  if (r.Failed()) return r;
  sample = result.Detach();
  return Result();
}

Result CMediaSample::Read(CStream* stream, int& version) {
  if (!stream) return ResultArgumentNull();
  RObject<CBinaryReader> reader(new CBinaryReader(stream));
  unsigned int tag = 0;
  Result r = reader->ReadFour(&tag);
  if (r.Failed()) return r;
  if (tag != GetType()) return ResultTypeMismatch("sample tag '%s'", FourString(tag).GetChars());
  return Read(reader.Get(), version);
}

Result CMediaSample::Write(CStream* stream, int version) const {
  if (!stream) return ResultArgumentNull();
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream));
  return Write(writer.Get(), version);
}

Result CMediaSample::Read(CByteArray* bytes, int& version) {
  if (!bytes) return ResultArgumentNull();
  RObject<CMemoryStream> stream(new CMemoryStream(bytes));
  return Read(stream.Get(), version);
}

Result CMediaSample::Write(int version, CByteArray*& bytes) const {
  bytes = nullptr;
  RObject<CMemoryStream> stream(new CMemoryStream());
  Result r = Write(stream.Get(), version);
  if (r.Failed()) return r;
  int length = static_cast<int>(stream->GetLength());
  RObject<CByteArray> out(new CByteArray(nullptr, length));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  int read = 0;
  r = stream->Read(out->GetData(), length, &read);
  if (r.Failed()) return r;
  bytes = out.Detach();
  return Result();
}

CProperties* CMediaSample::GetDescriptiveRepresentation() const {
  RObject<CProperties> bag(new CProperties());
  bag->SetFourProperty("type", GetType());
  bag->SetProperty("time", time_);
  bag->SetProperty("duration", duration_);
  bag->SetProperty("hint", hint_);
  if (trim_.head || trim_.tail) {
    bag->SetProperty("trim_head", trim_.head);
    bag->SetProperty("trim_tail", trim_.tail);
  }
  DescribeExtra(bag.Get());
  if (dataReference_) {
    RObject<CProperties> data(dataReference_->GetDescriptiveRepresentation());
    bag->SetProperty("data", data.Get());
  }
  if (GetPropertyCount() > 0) {
    RObject<CProperties> properties(new CProperties(this));
    bag->SetProperty("properties", properties.Get());
  }
  return bag.Detach();
}

Result CMediaSample::SetDuration(long long duration) {
  duration_ = duration;
  return Result();
}

Result CMediaSample::SetHint(int hint) {
  hint_ = hint;
  return Result();
}

Result CMediaSample::SetTime(long long time) {
  time_ = time;
  return Result();
}

void CMediaSample::GetTrim(int& head, int& tail) const {
  head = trim_.head;
  tail = trim_.tail;
}

Result CMediaSample::SetTrim(Range<int> trim) {
  trim_ = trim;
  return Result();
}

Result CMediaSample::SetTrim(int head, int tail) { return SetTrim(Range<int>(head, tail)); }

long long CMediaSample::GetCompositionDuration() const {
  return IsExcluded() ? 0 : duration_ - (static_cast<long long>(trim_.head) + trim_.tail);
}

bool CMediaSample::ContainsCompositionTime(long long time) const {
  long long start = GetCompositionTime();
  if (IsExcluded() || time < start) return false;
  return time < start + duration_ - (static_cast<long long>(trim_.head) + trim_.tail);
}

CDataReference* CMediaSample::GetDataReference() const { return Acquired(dataReference_); }

CDataReference* CMediaSample::GetDataReference(unsigned int tag) const {
  if (!dataReference_) return nullptr;
  if (dataReference_->IsType(tag)) return Acquired(dataReference_);
  if (dataReference_->IsType(CMultipleDataReference::TypeCode))
    return static_cast<CMultipleDataReference*>(dataReference_)->Get(tag);
  return nullptr;
}

Result CMediaSample::SetDataReference(CDataReference* reference) {
  Assign(dataReference_, reference);
  return Result();
}

Result CMediaSample::AddDataReference(CDataReference* reference) {
  if (!reference) return ResultArgumentNull();
  if (!dataReference_) {
    RObject<CMultipleDataReference> many(new CMultipleDataReference());
    Assign<CDataReference>(dataReference_, many.Get());
  } else if (!dataReference_->IsType(CMultipleDataReference::TypeCode)) {
    return ResultArrayFull();
  }
  return static_cast<CMultipleDataReference*>(dataReference_)->Add(reference);
}

CLockedDataReference* CMediaSample::GetLockedDataReference(int mode) const {
  RObject<CDataReference> memory(GetDataReference(FourCC("dram")));
  return memory ? new CLockedDataReference(memory.Get(), mode) : nullptr;
}

CMetadata* CMediaSample::GetMetadata() const { return Acquired(metadata_); }

Result CMediaSample::SetMetadata(CMetadata* metadata) {
  Assign(metadata_, metadata);
  return Result();
}

CMetadata* CMediaSample::AddMetadata() {
  if (!metadata_) metadata_ = new CMetadata();
  return Acquired(metadata_);
}

CAnalysis* CMediaSample::GetAnalysis() const { return Acquired(analysis_); }

Result CMediaSample::SetAnalysis(CAnalysis* analysis) {
  Assign(analysis_, analysis);
  return Result();
}

CAnalysis* CMediaSample::AddAnalysis() {
  if (!analysis_) analysis_ = new CAnalysis();
  return Acquired(analysis_);
}

CObject* CMediaSample::GetUserData() const { return Acquired(userData_); }

Result CMediaSample::SetUserData(CObject* userData) {
  Assign(userData_, userData);
  return Result();
}

}  // namespace Corvane::Mox
