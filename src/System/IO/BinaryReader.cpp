#include "System/IO/BinaryReader.h"

#include <utility>

#include "System/ByteArray.h"
#include "System/IO/ByteSwap.h"

namespace Corvane::Mox {

namespace {

constexpr int GuidSize = 16;

}  // namespace

CBinaryReader::CBinaryReader(CStream* stream) : CBinaryReader(stream, CBinary::LittleEndian) {}

CBinaryReader::CBinaryReader(CStream* stream, CBinary::ByteOrder order)
    : CObject(TypeCode), stream_(stream), order_(order) {
  if (stream_) stream_->Acquire();
}

CBinaryReader::~CBinaryReader() { Close(); }

Result CBinaryReader::ReadExactly(unsigned char* bytes, int count) {
  if (!stream_) return ResultNullPointer();
  int read = 0;
  Result result = stream_->Read(bytes, count, &read);
  if (result.Failed()) return result;
  return read < count ? Result(ResultEndOfStream()) : Result();
}

template <class T>
Result CBinaryReader::ReadValue(T* value) {
  if (!value) return ResultArgumentNull();
  unsigned char bytes[sizeof(T)];
  Result result = ReadExactly(bytes, sizeof(T));
  if (result.Failed()) return result;
  *value = ByteSwap::Load<T>(bytes, order_ == CBinary::BigEndian);
  return result;
}

Result CBinaryReader::ReadByte(unsigned char* value) { return ReadValue(value); }
Result CBinaryReader::ReadInt16(short* value) { return ReadValue(value); }
Result CBinaryReader::ReadInt32(int* value) { return ReadValue(value); }
Result CBinaryReader::ReadInt64(long long* value) { return ReadValue(value); }
Result CBinaryReader::ReadFloat32(float* value) { return ReadValue(value); }
Result CBinaryReader::ReadFloat64(double* value) { return ReadValue(value); }

Result CBinaryReader::ReadFour(unsigned int* value) {
  if (!value) return ResultArgumentNull();
  unsigned char bytes[4];
  Result result = ReadExactly(bytes, 4);
  if (result.Succeeded()) *value = ByteSwap::Load<unsigned int>(bytes, true);
  return result;
}

Result CBinaryReader::ReadInt32(int* value, CBinary::FieldType type, int defaultValue) {
  if (!value) return ResultArgumentNull();
  *value = 0;
  bool big = order_ == CBinary::BigEndian;
  unsigned char bytes[4] = {0, 0, 0, 0};
  Result result;
  switch (type) {
    case CBinary::FieldAbsent:
      *value = defaultValue;
      break;
    case CBinary::FieldOneByte:
      result = ReadExactly(bytes, 1);
      if (result.Succeeded()) *value = bytes[0];
      break;
    case CBinary::FieldTwoBytes:
      result = ReadExactly(bytes, 2);
      if (result.Succeeded()) *value = ByteSwap::Load<std::uint16_t>(bytes, big);
      break;
    case CBinary::FieldFourBytes:
      result = ReadInt32(value);
      break;
    case CBinary::FieldThreeBytes:
      result = ReadExactly(bytes, 3);
      if (big) std::swap(bytes[0], bytes[2]);
      if (result.Succeeded()) *value = ByteSwap::Load<int>(bytes, false);
      break;
  }
  return result;
}

Result CBinaryReader::ReadGuid(Guid* value) {
  if (!value) return ResultArgumentNull();
  unsigned char bytes[GuidSize];
  Result result = ReadExactly(bytes, GuidSize);
  if (result.Failed()) return result;
  if (order_ == CBinary::BigEndian) ByteSwap::ReverseGuidFields(bytes);
  *value = Guid(bytes);
  return result;
}

Result CBinaryReader::ReadBytes(unsigned char* bytes, int count) {
  if (!bytes) return ResultArgumentNull();
  return ReadExactly(bytes, count);
}

Result CBinaryReader::ReadBytes(CByteArray* bytes) {
  if (!bytes) return ResultArgumentNull();
  return ReadExactly(bytes->GetData(), bytes->GetLength());
}

CStream* CBinaryReader::GetStream() const {
  if (stream_) stream_->Acquire();
  return stream_;
}

long long CBinaryReader::GetLength() { return stream_ ? stream_->GetLength() : -1; }
long long CBinaryReader::GetAvailableLength() { return stream_ ? stream_->GetAvailableLength() : -1; }
long long CBinaryReader::GetPosition() { return stream_ ? stream_->GetPosition() : -1; }

Result CBinaryReader::Skip(long long count) { return Seek(count, SeekOrigin::Current, nullptr); }

Result CBinaryReader::Seek(long long offset, SeekOrigin origin, long long* position) {
  return stream_ ? stream_->Seek(offset, origin, position) : ResultNullPointer();
}

void CBinaryReader::Close() {
  CStream* stream = stream_;
  stream_ = nullptr;
  if (stream) stream->Release();
}

}  // namespace Corvane::Mox
