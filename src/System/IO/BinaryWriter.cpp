#include "System/IO/BinaryWriter.h"

#include <utility>

#include "System/ByteArray.h"
#include "System/IO/ByteSwap.h"

namespace Corvane::Mox {

namespace {

constexpr int GuidSize = 16;

}  // namespace

CBinaryWriter::CBinaryWriter(CStream* stream) : CBinaryWriter(stream, CBinary::LittleEndian) {}

CBinaryWriter::CBinaryWriter(CStream* stream, CBinary::ByteOrder order)
    : CObject(TypeCode), stream_(stream), order_(order) {
  if (stream_) stream_->Acquire();
}

CBinaryWriter::~CBinaryWriter() { Close(); }

Result CBinaryWriter::WriteExactly(const unsigned char* bytes, int count) {
  if (!stream_) return ResultNullPointer();
  int written = 0;
  Result result = stream_->Write(bytes, count, &written);
  if (result.Failed()) return result;
  return written < count ? Result(ResultEndOfStream()) : Result();
}

template <class T>
Result CBinaryWriter::WriteValue(T value) {
  unsigned char bytes[sizeof(T)];
  ByteSwap::Store(value, order_ == CBinary::BigEndian, bytes);
  return WriteExactly(bytes, sizeof(T));
}

Result CBinaryWriter::WriteByte(unsigned char value) { return WriteExactly(&value, 1); }
Result CBinaryWriter::WriteInt16(short value) { return WriteValue(value); }
Result CBinaryWriter::WriteInt32(int value) { return WriteValue(value); }
Result CBinaryWriter::WriteInt64(long long value) { return WriteValue(value); }
Result CBinaryWriter::WriteFloat32(float value) { return WriteValue(value); }
Result CBinaryWriter::WriteFloat64(double value) { return WriteValue(value); }

Result CBinaryWriter::WriteFour(unsigned int value) {
  unsigned char bytes[4];
  ByteSwap::Store(value, true, bytes);
  return WriteExactly(bytes, 4);
}

Result CBinaryWriter::WriteInt32(int value, CBinary::FieldType type) {
  bool big = order_ == CBinary::BigEndian;
  unsigned char bytes[4];
  switch (type) {
    case CBinary::FieldAbsent:
      return Result();
    case CBinary::FieldOneByte:
      return WriteByte(static_cast<unsigned char>(value));
    case CBinary::FieldTwoBytes:
      return WriteInt16(static_cast<short>(value));
    case CBinary::FieldFourBytes:
      return WriteInt32(value);
    case CBinary::FieldThreeBytes:
      ByteSwap::Store(value, false, bytes);
      if (big) std::swap(bytes[0], bytes[2]);
      return WriteExactly(bytes, 3);
  }
  return ResultNotSupported();
}

Result CBinaryWriter::WriteGuid(Guid value) {
  unsigned char bytes[GuidSize];
  value.ToByteArray(bytes);
  if (order_ == CBinary::BigEndian) ByteSwap::ReverseGuidFields(bytes);
  return WriteExactly(bytes, GuidSize);
}

Result CBinaryWriter::WriteBytes(const unsigned char* bytes, int count) {
  if (count == 0) return Result();
  if (!bytes) return ResultArgumentNull();
  return WriteExactly(bytes, count);
}

Result CBinaryWriter::WriteBytes(CByteArray* bytes) {
  if (!bytes) return ResultArgumentNull();
  return WriteBytes(bytes->GetData(), bytes->GetLength());
}

Result CBinaryWriter::WriteBytes(CByteArray* bytes, int offset, int count) {
  if (!bytes) return ResultArgumentNull();
  if (offset < 0 || count < 0 || static_cast<long long>(offset) + count > bytes->GetLength())
    return ResultArgumentOutOfRange();
  return WriteBytes(bytes->GetData() + offset, count);
}

Result CBinaryWriter::Flush() { return stream_ ? stream_->Flush() : ResultNullPointer(); }

void CBinaryWriter::Close() {
  CStream* stream = stream_;
  stream_ = nullptr;
  if (stream) stream->Release();
}

CStream* CBinaryWriter::GetStream() const {
  if (stream_) stream_->Acquire();
  return stream_;
}

long long CBinaryWriter::GetLength() { return stream_ ? stream_->GetLength() : -1; }
long long CBinaryWriter::GetPosition() { return stream_ ? stream_->GetPosition() : -1; }

Result CBinaryWriter::Skip(int count) { return Seek(count, SeekOrigin::Current, nullptr); }

Result CBinaryWriter::Seek(long long offset, SeekOrigin origin, long long* position) {
  return stream_ ? stream_->Seek(offset, origin, position) : ResultNullPointer();
}

}  // namespace Corvane::Mox
