#include "System/Media/Container/ContainerReader.h"

#include <algorithm>

#include "System/ByteArray.h"
#include "System/Collections/List.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BufferedStream.h"
#include "System/IO/MemoryStream.h"
#include "System/Console.h"
#include "System/Media/Metadata/Metadata.h"
#include "System/IO/FileStream.h"
#include "System/IO/Stream.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerContext.h"
#include "System/Media/Container/ContainerPropertiesExtension.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/MultipleDataReference.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Subtitle/SubtitleSample.h"
#include "System/Media/Variance/Variance.h"
#include "System/Media/Variance/VarianceProperties.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

CContainerReader::CContainerReader(unsigned int componentCode)
    : CContainer(componentCode), readTimeout_(0), readMargin_(0) {}

CContainerReader::~CContainerReader() = default;

int CContainerReader::GetReadTimeout() const {
  CAutoLock lock(this);
  return readTimeout_;
}

int CContainerReader::GetReadMargin() const {
  CAutoLock lock(this);
  return readMargin_;
}

Result CContainerReader::GetProperty(CString* name, CVariant*& value) const {
  value = nullptr;
  if (!name) return ResultArgumentNull();
  const char* key = name->GetChars();
  if (ContainerProperty::ContainerReader::ReadTimeout == key) {
    value = new CVariant(GetReadTimeout());
    return Result();
  }
  if (ContainerProperty::ContainerReader::ReadMargin == key) {
    value = new CVariant(GetReadMargin());
    return Result();
  }
  // Index threads record what they find in the bag (IsIndexAtEnd) while
  // others read it.
  CAutoLock lock(this);
  return IProperties::GetProperty(name, value);
}

void CContainerReader::ForwardToStreams(unsigned int code, int length, unsigned char* data) const {
  CContainerContext* context = GetContext();
  if (!context) return;
  RObject<CList<CStream>> streams(context->GetStreams());
  for (CStream* stream : *streams) stream->Control(code, length, data);
}

Result CContainerReader::SetProperty(CString* name, CVariant* value) {
  if (!name) return ResultArgumentNull();
  const char* key = name->GetChars();
  const bool timeout = ContainerProperty::ContainerReader::ReadTimeout == key;
  if (timeout || ContainerProperty::ContainerReader::ReadMargin == key) {
    if (!value) return ResultNullPointer();
    int number = value->ToInt32();
    {
      CAutoLock lock(this);
      (timeout ? readTimeout_ : readMargin_) = number;
      // An index thread waiting for a growing file counts from the new value.
      NotifyAll();
    }
    ForwardToStreams(timeout ? CFileStream::SetReadTimeoutCode : CFileStream::SetReadMarginCode, sizeof(number),
                     reinterpret_cast<unsigned char*>(&number));
    return Result();
  }
  if (ContainerProperty::ContainerReader::IsIndexAtEnd == key) ForwardToStreams(CFileStream::SetCachingCode, 0, nullptr);
  CAutoLock lock(this);
  return IProperties::SetProperty(name, value);
}

int CContainerReader::Validate(CStream*) { return 0; }

Result CContainerReader::ReadVideoSample(int, CVideoSample*& sample) {
  sample = nullptr;
  return ResultNotImplemented();
}

Result CContainerReader::ReadAudioSample(int, CAudioSample*& sample) {
  sample = nullptr;
  return ResultNotImplemented();
}

Result CContainerReader::ReadSubtitleSample(int, CSubtitleSample*& sample) {
  sample = nullptr;
  return ResultNotImplemented();
}

// The data slots of a reader without them.
#define MOX_READER_DATA_SLOTS(Kind)                                                                           \
  Result CContainerReader::Read##Kind##Data(int, CContainerDataReference*, CDataReference*& data) {          \
    data = nullptr;                                                                                           \
    return ResultNotImplemented();                                                                            \
  }                                                                                                           \
  Result CContainerReader::Resolve##Kind##Data(int, CContainerDataReference*, CStreamDataReference*& data) { \
    data = nullptr;                                                                                           \
    return ResultNotImplemented();                                                                            \
  }                                                                                                           \
  Result CContainerReader::Read##Kind##Metadata(int, unsigned int, CContainerDataReference*,                \
                                                CMemoryDataReference*& data) {                               \
    data = nullptr;                                                                                           \
    return ResultNotImplemented();                                                                            \
  }
MOX_READER_DATA_SLOTS(Video)
MOX_READER_DATA_SLOTS(Audio)
MOX_READER_DATA_SLOTS(Subtitle)
#undef MOX_READER_DATA_SLOTS

namespace {

// Replaces the sample's "read" reference with what `read` returns for it.
template <class Read>
Result ReplaceReadReference(CMediaSample* sample, Read read) {
  if (!sample) return ResultArgumentNull();
  RObject<CDataReference> reference(sample->GetDataReference(CContainerDataReference::TypeCode));
  if (!reference) return Result();
  RObject<CDataReference> data;
  Result result = read(static_cast<CContainerDataReference*>(reference.Get()), data.Out());
  if (result.Failed()) return result;
  return sample->SetDataReference(data);
}

}  // namespace

Result CContainerReader::ReadVideoData(int track, CVideoSample* sample) {
  return ReplaceReadReference(sample, [&](CContainerDataReference* reference, CDataReference*& data) {
    return ReadVideoData(track, reference, data);
  });
}

Result CContainerReader::ReadAudioData(int track, CAudioSample* sample) {
  return ReplaceReadReference(sample, [&](CContainerDataReference* reference, CDataReference*& data) {
    return ReadAudioData(track, reference, data);
  });
}

Result CContainerReader::ReadSubtitleData(int track, CSubtitleSample* sample) {
  return ReplaceReadReference(sample, [&](CContainerDataReference* reference, CDataReference*& data) {
    return ReadSubtitleData(track, reference, data);
  });
}

namespace {

// Reads the "read" payloads of a sample's metadata elements through `read`
// and decodes each element from its bytes; the first failure ends the loop.
template <class Read>
Result ReadElements(CMediaProperties* properties, CMediaSample* sample, Read read) {
  if (!sample) return ResultArgumentNull();
  if (!properties) return ResultNullPointer("the track has no properties");
  RObject<CMetadata> metadata(sample->AddMetadata());
  RObject<CDataReference> essence(sample->GetDataReference());
  // Elements carried inside the essence can only be found once its bytes
  // are read; metadata that lives beside the essence is read regardless.
  if (!essence || essence->IsType(CContainerDataReference::TypeCode))
    MOX_LOG(Console::Warning, "sample missing data reference");
  for (int i = 0; i < metadata->GetCount(); ++i) {
    RObject<CMetadataElement> element(metadata->GetElementAt(i));
    RObject<CDataReference> payload(element ? element->GetDataReference() : nullptr);
    if (!payload || !payload->IsType(CContainerDataReference::TypeCode)) continue;
    RObject<CMemoryDataReference> bytes;
    Result result = read(element->GetType(), static_cast<CContainerDataReference*>(payload.Get()), bytes.Out());
    if (result.Failed()) return result;
    element->SetDataReference(bytes);
    if (!bytes || bytes->GetLength() <= 0) continue;
    RObject<CMemoryStream> stream(new CMemoryStream(bytes->GetLength(), bytes->GetData()));
    RObject<CBinaryReader> reader(new CBinaryReader(stream));
    result = element->Read(reader, bytes->GetLength());
    if (result.Failed()) return result;
  }
  return Result();
}

}  // namespace

Result CContainerReader::ReadVideoMetadata(int track, CVideoSample* sample) {
  RObject<CVideoProperties> properties(GetVideoProperties(track));
  return ReadElements(properties, sample, [&](unsigned int type, CContainerDataReference* reference,
                                              CMemoryDataReference*& data) {
    return ReadVideoMetadata(track, type, reference, data);
  });
}

Result CContainerReader::ReadAudioMetadata(int track, CAudioSample* sample) {
  RObject<CAudioProperties> properties(GetAudioProperties(track));
  return ReadElements(properties, sample, [&](unsigned int type, CContainerDataReference* reference,
                                              CMemoryDataReference*& data) {
    return ReadAudioMetadata(track, type, reference, data);
  });
}

Result CContainerReader::ReadSubtitleMetadata(int track, CSubtitleSample* sample) {
  RObject<CSubtitleProperties> properties(GetSubtitleProperties(track));
  return ReadElements(properties, sample, [&](unsigned int type, CContainerDataReference* reference,
                                              CMemoryDataReference*& data) {
    return ReadSubtitleMetadata(track, type, reference, data);
  });
}

Result CContainerReader::OpenStream(CStream*& stream) { return OpenStream(nullptr, stream, true); }

Result CContainerReader::OpenStream(CString* name, CStream*& stream, bool buffered) {
  stream = nullptr;
  CContainerContext* context = GetContext();
  if (!context) return ResultNullPointer("reader has no context");
  return context->OpenStream(this, name, stream, buffered);
}

long long CContainerReader::GetDurationInMilliseconds() const {
  long long longest = 0;
  auto consider = [&longest](const CMediaProperties* properties) {
    if (properties && properties->GetTimeScale() != 0)
      longest = std::max(longest, properties->GetDuration() * 1000 / properties->GetTimeScale());
  };
  for (int i = 0; i < GetVideoMediaCount(); ++i) {
    RObject<CVideoProperties> properties(GetVideoProperties(i));
    consider(properties);
  }
  for (int i = 0; i < GetAudioMediaCount(); ++i) {
    RObject<CAudioProperties> properties(GetAudioProperties(i));
    consider(properties);
  }
  for (int i = 0; i < GetSubtitleMediaCount(); ++i) {
    RObject<CSubtitleProperties> properties(GetSubtitleProperties(i));
    consider(properties);
  }
  return longest;
}

void CContainerReader::SynchronizeVariances() {
  CAutoLock lock(this);
  if (CVariance::IsEmpty()) return;
  RObject<CContainerPropertiesExtension> extension(GetExtension(CVarianceProperties::TypeCode));
  if (!extension) {
    extension = new CVarianceProperties();
    AddExtension(extension).ThrowIfFailed();
  }
  CVariance::Synchronize(static_cast<CVarianceProperties*>(extension.Get()));
}

void CContainerReader::ClearVariances() {
  CAutoLock lock(this);
  CVariance::Clear();
}

Result CContainerReader::ReadData(CStream* stream, long long position, CByteArray* bytes) {
  if (!stream) throw ResultNullPointer("null stream parameter");
  if (!bytes) return ResultArgumentNull();
  CAutoLock lock(stream);
  Result result = stream->Seek(position, SeekOrigin::Begin, nullptr);
  if (result.Failed()) return result;
  int total = 0;
  while (total < bytes->GetLength()) {
    int read = 0;
    result = stream->Read(bytes->GetData() + total, bytes->GetLength() - total, &read);
    if (result.Failed()) return result;
    if (read <= 0) return ResultEndOfStream("%d of %d bytes at %lld", total, bytes->GetLength(), position);
    total += read;
  }
  return Result();
}

Result CContainerReader::ReadData(CStream* stream, CStorageDataReference* reference, CByteArray*& bytes) {
  bytes = nullptr;
  if (!reference) return ResultArgumentNull();
  RObject<CByteArray> array(new CByteArray(reference->GetLength(), 64));
  Result result = ReadData(stream, reference->GetPosition(), array);
  if (result.Failed()) return result;
  bytes = array.Detach();
  return Result();
}

Result CContainerReader::ReadData(CStream* stream, CStorageDataReference* reference, CMemoryDataReference*& data) {
  data = nullptr;
  RObject<CByteArray> bytes;
  Result result = ReadData(stream, reference, bytes.Out());
  if (result.Failed()) return result;
  data = new CBufferDataReference(bytes.Get());
  return Result();
}

Result CContainerReader::ReadData(CStream* stream, CStorageDataReference* reference, CDataReference*& data) {
  data = nullptr;
  RObject<CMemoryDataReference> memory;
  Result result = ReadData(stream, reference, memory.Out());
  if (result.Failed()) return result;
  RObject<CMultipleDataReference> many(new CMultipleDataReference());
  many->Add(memory);
  data = many.Detach();
  return Result();
}

namespace {

// The stream under a cache, where the bytes really are (acquired).
RObject<CStream> Unbuffered(CStream* stream) {
  if (stream && stream->IsType(CBufferedStream::TypeCode)) {
    RObject<CStream> base(static_cast<CBufferedStream*>(stream)->GetStream());
    if (base) return base;
  }
  if (stream) stream->Acquire();
  return RObject<CStream>(stream);
}

}  // namespace

Result CContainerReader::ReadVideoData(CStream* stream, CVideoProperties* properties, CStorageDataReference* reference,
                                       CDataReference*& data) {
  data = nullptr;
  RObject<CByteArray> bytes;
  Result result = ReadData(stream, reference, bytes.Out());
  if (result.Failed()) return result;
  RObject<CMemoryDataReference> memory;
  result = CMemoryDataReference::Create(properties, bytes, memory.Out());
  if (result.Failed()) return result;
  RObject<CMultipleDataReference> many(new CMultipleDataReference());
  many->Add(memory);
  RObject<CStreamDataReference> stored(
      new CStreamDataReference(Unbuffered(stream).Get(), reference->GetPosition(), reference->GetLength()));
  many->Add(stored);
  data = many.Detach();
  return Result();
}

Result CContainerReader::ReadUncached(CStream* stream, long long position, unsigned char* bytes, int count,
                                      int& read) {
  read = 0;
  if (!stream) throw ResultNullPointer("null stream parameter");
  CAutoLock lock(stream);
  RObject<CStream> base(Unbuffered(stream));
  Result result = base->Seek(position, SeekOrigin::Begin, nullptr);
  while (result.Succeeded() && read < count) {
    int got = 0;
    result = base->Read(bytes + read, count - read, &got);
    if (got <= 0) break;
    read += got;
  }
  return result;
}

Result CContainerReader::ResolveData(CStream* stream, CStorageDataReference* reference, CStreamDataReference*& data) {
  data = nullptr;
  if (!stream || !reference) return ResultArgumentNull();
  RObject<CStream> base(Unbuffered(stream));
  if (base->IsType(CFileStream::TypeCode)) {
    data = new CFileDataReference(static_cast<CFileStream*>(base.Get()), reference->GetPosition(), reference->GetLength());
  } else {
    data = new CStreamDataReference(base, reference->GetPosition(), reference->GetLength());
  }
  return Result();
}

}  // namespace Corvane::Mox
