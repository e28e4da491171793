#include "System/Media/MemoryDataReference.h"

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/MediaBinary.h"

namespace Corvane::Mox {

CMemoryDataReference::CMemoryDataReference(unsigned int type) : CDataReference(type) {}

bool CMemoryDataReference::IsType(unsigned int type) const { return type == FourCC("dram") || CObject::IsType(type); }

CLinearDataReference::CLinearDataReference(unsigned int type, int length)
    : CMemoryDataReference(type), length_(length) {}

bool CLinearDataReference::IsType(unsigned int type) const {
  return type == FourCC("1d[]") || CMemoryDataReference::IsType(type);
}

Result CLinearDataReference::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  return reader->ReadInt32(&length_);
}

Result CLinearDataReference::Write(CBinaryWriter* writer) const {
  if (!writer) return ResultArgumentNull();
  return writer->WriteInt32(length_);
}

CBufferDataReference::CBufferDataReference(int capacity)
    : CLinearDataReference(TypeCode, capacity > 0 ? capacity : 0), buffer_(new CByteArray(capacity, 64)) {}

CBufferDataReference::CBufferDataReference(CByteArray* buffer)
    : CLinearDataReference(TypeCode, buffer ? buffer->GetLength() : 0), buffer_(buffer) {
  if (buffer_) buffer_->Acquire();
}

CBufferDataReference::~CBufferDataReference() {
  if (buffer_) buffer_->Release();
}

bool CBufferDataReference::IsType(unsigned int type) const {
  return type == TypeCode || CLinearDataReference::IsType(type);
}

unsigned char* CBufferDataReference::GetData() { return buffer_ ? buffer_->GetData() : nullptr; }

Result CBufferDataReference::SetLength(int length) {
  if (length < 0 || length > GetAvailableLength()) return ResultArgumentOutOfRange();
  length_ = length;
  return Result();
}

Result CBufferDataReference::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  int length = 0;
  Result result = reader->ReadInt32(&length);
  if (result.Succeeded()) result = MediaBinary::CheckRemaining(reader, length);
  if (result.Failed()) return result;
  RObject<CByteArray> bytes(new CByteArray(length, 64));
  if (length > 0) {
    result = reader->ReadBytes(bytes.Get());
    if (result.Failed()) return result;
  }
  SetBuffer(bytes.Get());
  return Result();
}

Result CBufferDataReference::Write(CBinaryWriter* writer) const {
  if (!writer) return ResultArgumentNull();
  Result result = writer->WriteInt32(length_);
  if (result.Failed() || length_ == 0) return result;
  return writer->WriteBytes(buffer_, 0, length_);
}

int CBufferDataReference::GetAvailableLength() const { return buffer_ ? buffer_->GetLength() : 0; }

CByteArray* CBufferDataReference::GetBuffer() const {
  if (buffer_) buffer_->Acquire();
  return buffer_;
}

void CBufferDataReference::SetBuffer(CByteArray* buffer) {
  if (buffer) buffer->Acquire();
  if (buffer_) buffer_->Release();
  buffer_ = buffer;
  length_ = buffer_ ? buffer_->GetLength() : 0;
}

CAccessUnitDataReference::CAccessUnitDataReference(CByteArray* bytes) : CMemoryDataReference(TypeCode), bytes_(bytes) {
  if (bytes_) bytes_->Acquire();
}

CAccessUnitDataReference::~CAccessUnitDataReference() {
  if (bytes_) bytes_->Release();
}

bool CAccessUnitDataReference::IsType(unsigned int type) const {
  return type == TypeCode || CMemoryDataReference::IsType(type);
}

int CAccessUnitDataReference::GetLength() { return bytes_ ? bytes_->GetLength() : 0; }

unsigned char* CAccessUnitDataReference::GetData() { return bytes_ ? bytes_->GetData() : nullptr; }

CByteArray* CAccessUnitDataReference::GetBytes() const {
  if (bytes_) bytes_->Acquire();
  return bytes_;
}

}  // namespace Corvane::Mox
