#include "System/IO/MemoryStream.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "System/ByteArray.h"

namespace Corvane::Mox {

namespace {

constexpr long long PositionLimit = 0x80000000LL;  // 2^31, one past the largest array offset

}  // namespace

CMemoryStream::CMemoryStream()
    : CStream(TypeCode), buffer_(nullptr), data_(nullptr), length_(0), room_(0), position_(0), expandable_(true) {
  Adopt(new CByteArray(32, 1), 0, 0, 32);
}

CMemoryStream::CMemoryStream(int capacity)
    : CStream(TypeCode), buffer_(nullptr), data_(nullptr), length_(0), room_(0), position_(0), expandable_(false) {
  int size = std::max(capacity, 0);
  Adopt(new CByteArray(size, 1), 0, 0, size);
}

CMemoryStream::CMemoryStream(CByteArray* array) : CMemoryStream(array, 0, array ? array->GetLength() : 0) {}

CMemoryStream::CMemoryStream(CByteArray* array, int offset, int count)
    : CStream(TypeCode), buffer_(nullptr), data_(nullptr), length_(0), room_(0), position_(0), expandable_(false) {
  if (!array) return;
  array->Acquire();
  int total = array->GetLength();
  if (offset < 0 || offset > total) offset = total;
  count = std::clamp(count, 0, total - offset);
  Adopt(array, offset, count, count);
}

CMemoryStream::CMemoryStream(int length, unsigned char* bytes)
    : CStream(TypeCode), buffer_(nullptr), data_(nullptr), length_(0), room_(0), position_(0), expandable_(false) {
  if (!bytes) return;
  int size = std::max(length, 0);
  Adopt(new CByteArray(size, bytes, nullptr), 0, size, size);
}

CMemoryStream::~CMemoryStream() {
  if (buffer_) buffer_->Release();
}

// Takes over one reference to buffer; the content starts offset bytes in.
void CMemoryStream::Adopt(CByteArray* buffer, int offset, int length, int room) {
  if (buffer_) buffer_->Release();
  buffer_ = buffer;
  data_ = buffer->GetData() + offset;
  length_ = length;
  room_ = room;
}

Result CMemoryStream::SetLength(long long length) {
  if (length < 0 || length > room_) return ResultArgumentOutOfRange();
  length_ = static_cast<int>(length);
  return Result();
}

Result CMemoryStream::Read(unsigned char* buffer, int count, int* read) {
  if (read) *read = 0;
  if (!data_ || position_ < 0) return ResultInvalidOperation();
  long long available = std::max<long long>(length_ - position_, 0);
  int n = static_cast<int>(std::clamp<long long>(count, 0, available));
  if (n > 0) std::memcpy(buffer, data_ + position_, static_cast<std::size_t>(n));
  position_ += n;
  if (read) *read = n;
  return Result();
}

int CMemoryStream::ReadByte() {
  if (!data_ || position_ < 0 || position_ >= length_) return -1;
  return data_[position_++];
}

Result CMemoryStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  long long target = position_;
  switch (origin) {
    case SeekOrigin::Begin:
      target = offset;
      break;
    case SeekOrigin::Current:
      target = position_ + offset;
      break;
    case SeekOrigin::End:
      target = length_ + offset;
      break;
  }
  if (target < 0 || target >= PositionLimit) return ResultArgumentOutOfRange();
  position_ = target;
  if (position) *position = position_;
  return Result();
}

void CMemoryStream::Expand(long long size) {
  if (!expandable_ || size >= PositionLimit || size <= room_) return;
  int capacity = static_cast<int>(std::min<long long>(2 * size, INT_MAX));
  auto* bigger = new CByteArray(capacity, 1);
  if (length_ > 0) std::memcpy(bigger->GetData(), data_, static_cast<std::size_t>(length_));
  Adopt(bigger, 0, length_, capacity);
}

Result CMemoryStream::PrepareWrite(int count, bool fullIsEndOfStream) {
  if (!data_ || position_ < 0) return ResultEndOfStream();
  if (count < 0) return ResultArgumentOutOfRange();
  Expand(position_ + count);
  if (position_ + count > room_) {
    if (fullIsEndOfStream) return ResultEndOfStream();
    return ResultArgumentOutOfRange();
  }
  // A write after a seek past the end leaves no stale bytes in the gap.
  if (position_ > length_) std::memset(data_ + length_, 0, static_cast<std::size_t>(position_ - length_));
  return Result();
}

Result CMemoryStream::Write(const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  Result result = PrepareWrite(count, false);
  if (result.Failed()) return result;
  if (count > 0) std::memcpy(data_ + position_, buffer, static_cast<std::size_t>(count));
  position_ += count;
  length_ = std::max<int>(length_, static_cast<int>(position_));
  if (written) *written = count;
  return Result();
}

Result CMemoryStream::WriteByte(unsigned char value, int* written) { return Fill(value, 1, written, true); }

Result CMemoryStream::Write(unsigned char value, int count, int* written) { return Fill(value, count, written, false); }

Result CMemoryStream::Fill(unsigned char value, int count, int* written, bool fullIsEndOfStream) {
  if (written) *written = 0;
  Result result = PrepareWrite(count, fullIsEndOfStream);
  if (result.Failed()) return result;
  if (count > 0) std::memset(data_ + position_, value, static_cast<std::size_t>(count));
  position_ += count;
  length_ = std::max<int>(length_, static_cast<int>(position_));
  if (written) *written = count;
  return Result();
}

CByteArray* CMemoryStream::GetBuffer() const {
  if (buffer_) buffer_->Acquire();
  return buffer_;
}

CByteArray* CMemoryStream::ToByteArray() const { return new CByteArray(data_, length_); }

}  // namespace Corvane::Mox
