#include "System/IO/StreamBuffer.h"

#include <algorithm>
#include <cstring>

#include "System/ByteArray.h"
#include "System/IO/FileStream.h"
#include "System/IO/Stream.h"

namespace Corvane::Mox {

namespace {

constexpr int BufferAlignment = 4096;

// Whether the stream waits for a growing file when a read comes short: it
// answers the read-timeout query with a positive value.
bool FollowsGrowth(CStream* stream) {
  int timeout = 0;
  return stream->Control(CFileStream::GetReadTimeoutCode, sizeof(timeout), reinterpret_cast<unsigned char*>(&timeout))
             .Succeeded() &&
         timeout > 0;
}

}  // namespace

CStreamBuffer::CStreamBuffer(int size)
    : size_(std::max(size, 1)),
      storage_(new CByteArray(size_, BufferAlignment)),
      data_(nullptr),
      offset_(-1),
      valid_(0),
      held_(0),
      blind_(false),
      dirty_(false) {
  data_ = storage_->GetData();
}

CStreamBuffer::~CStreamBuffer() { storage_->Release(); }

Result CStreamBuffer::MoveTo(CStream* stream, long long position) {
  if (stream->GetPosition() == position) return Result();
  if (!stream->CanSeek()) return ResultInvalidOperation();
  return stream->Seek(position, SeekOrigin::Begin, nullptr);
}

Result CStreamBuffer::Initialize(CStream* stream, long long position, int wanted) {
  Invalidate();
  Result result = MoveTo(stream, position);
  if (result.Failed()) return result;
  offset_ = position;
  blind_ = !stream->CanRead();
  if (blind_ || stream->GetLength() == 0) return Result();
  int request = size_;
  if (FollowsGrowth(stream)) {
    const long long available = stream->GetAvailableLength() - position;
    if (available >= 0 && available < size_)
      request = std::max(static_cast<int>(available), std::clamp(wanted, 0, size_));
  }
  int read = 0;
  result = stream->Read(data_, request, &read);
  if (result.Failed()) {
    Invalidate();
    return result;
  }
  valid_ = std::max(read, 0);
  return result;
}

Result CStreamBuffer::Finalize(CStream* stream) {
  if (!dirty_ || offset_ < 0) return Result();
  Result result = MoveTo(stream, offset_ + held_);
  if (result.Failed()) return result;
  int written = 0;
  result = stream->Write(data_ + held_, valid_ - held_, &written);
  if (result.Failed()) return result;
  if (written < valid_ - held_) return ResultEndOfStream();
  dirty_ = false;
  return Result();
}

void CStreamBuffer::Invalidate() {
  offset_ = -1;
  valid_ = 0;
  held_ = 0;
  blind_ = false;
  dirty_ = false;
}

Result CStreamBuffer::Read(long long position, unsigned char* buffer, int count, int* read) const {
  int n = std::clamp(Available(position), 0, std::max(count, 0));
  if (n > 0) Copy(buffer, At(position), static_cast<std::size_t>(n));
  if (read) *read = n;
  return Result();
}

Result CStreamBuffer::Write(long long position, const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  if (!Covers(position) || count <= 0) return Result();
  int start = static_cast<int>(position - offset_);
  int n = std::min(count, size_ - start);
  // A window that could not read the stream starts where the first write
  // does (the caller flushes it before a write it does not Accept).
  if (blind_ && valid_ == held_) held_ = valid_ = start;
  // Bytes skipped by a seek past the valid data are written back as zeros.
  if (start > valid_) std::memset(data_ + valid_, 0, static_cast<std::size_t>(start - valid_));
  Copy(data_ + start, buffer, static_cast<std::size_t>(n));
  valid_ = std::max(valid_, start + n);
  dirty_ = true;
  if (written) *written = n;
  return Result();
}

}  // namespace Corvane::Mox
