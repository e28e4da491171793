#include "System/Media/StorageDataReference.h"

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/FileStream.h"
#include "System/Media/MemoryDataReference.h"

namespace Corvane::Mox {

CStorageDataReference::CStorageDataReference(long long position, int length)
    : CStorageDataReference(TypeCode, position, length) {}

CStorageDataReference::CStorageDataReference(unsigned int type, long long position, int length)
    : CDataReference(type), position_(position), length_(length) {}

bool CStorageDataReference::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

Result CStorageDataReference::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  long long position = 0;
  int length = 0;
  Result result = reader->ReadInt64(&position);
  if (result.Succeeded()) result = reader->ReadInt32(&length);
  if (result.Failed()) return result;
  position_ = position;
  length_ = length;
  return Result();
}

Result CStorageDataReference::Write(CBinaryWriter* writer) const {
  if (!writer) return ResultArgumentNull();
  Result result = writer->WriteInt64(position_);
  return result.Failed() ? result : writer->WriteInt32(length_);
}

// The stream and file references report the storage tag as their type: it is
// the tag their binary form is read back under.
CStreamDataReference::CStreamDataReference(CStream* stream, long long position, int length, long long chunkPosition,
                                           int chunkLength)
    : CStorageDataReference(position, length),
      stream_(stream),
      chunkPosition_(chunkPosition),
      chunkLength_(chunkLength) {
  if (stream_) stream_->Acquire();
}

CStreamDataReference::~CStreamDataReference() {
  if (stream_) stream_->Release();
}

bool CStreamDataReference::IsType(unsigned int type) const {
  return type == FourCC("strm") || CStorageDataReference::IsType(type);
}

CStream* CStreamDataReference::GetStream() const {
  if (stream_) stream_->Acquire();
  return stream_;
}

bool CStreamDataReference::IsStreamType(unsigned int tag) const { return stream_ && stream_->IsType(tag); }

Result CStreamDataReference::ReadData(CBufferDataReference*& data) {
  data = nullptr;
  if (!stream_) return ResultNullPointer();
  if (GetLength() < 0) return ResultArgumentOutOfRange();
  Result result = stream_->Seek(GetPosition(), SeekOrigin::Begin, nullptr);
  if (result.Failed()) return result;
  RObject<CByteArray> bytes(new CByteArray(GetLength(), 64));
  int read = 0;
  result = stream_->Read(bytes->GetData(), GetLength(), &read);
  if (result.Failed()) return result;
  if (read != GetLength()) return ResultEndOfStream();
  data = new CBufferDataReference(bytes.Get());
  return Result();
}

CFileDataReference::CFileDataReference(CFileStream* stream, long long position, int length)
    : CStreamDataReference(stream, position, length) {}

bool CFileDataReference::IsType(unsigned int type) const {
  return type == FourCC("file") || CStreamDataReference::IsType(type);
}

CFileStream* CFileDataReference::GetFileStream() const { return static_cast<CFileStream*>(GetStream()); }

CString* CFileDataReference::GetPath() const {
  RObject<CFileStream> stream(GetFileStream());
  return stream ? stream->GetPath() : nullptr;
}

CContainerDataReference::CContainerDataReference() : CStorageDataReference(TypeCode, 0, 0) {}

CContainerDataReference::CContainerDataReference(unsigned int tag, long long position, int length)
    : CStorageDataReference(tag, position, length) {}

// Container references answer "read" (and their container's tag), not
// "disk": their position means something only to the container's reader.
bool CContainerDataReference::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

}  // namespace Corvane::Mox
