#include "System/IO/BufferedStream.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace Corvane::Mox {

CBufferedStream::CBufferedStream(CStream* stream, int bufferSize, int bufferCount)
    : CWrappedStream(TypeCode, stream),
      position_(0),
      length_(stream ? stream->GetLength() : 0),
      bufferSize_(std::max(bufferSize, 1)),
      buffers_(new CList<CStreamBuffer>()),
      front_(nullptr) {
  for (int i = 0; i < std::max(bufferCount, 1); ++i) {
    RObject<CStreamBuffer> buffer(new CStreamBuffer(bufferSize_));
    buffers_->Add(buffer);
    if (!front_) front_ = buffer;
  }
}

CBufferedStream::~CBufferedStream() {
  // Writes still held in the windows go out even without a Close.
  if (stream_) Flush();
  buffers_->Release();
}

long long CBufferedStream::GetAvailableLength() {
  return stream_ ? std::max(length_, stream_->GetAvailableLength()) : length_;
}

Result CBufferedStream::SetLength(long long length) {
  if (!stream_) return ResultInvalidOperation();
  for (CStreamBuffer* buffer : *buffers_) {
    Result result = buffer->Finalize(stream_);
    if (result.Failed()) return result;
    buffer->Invalidate();
  }
  Result result = stream_->SetLength(length);
  if (result.Succeeded()) length_ = length;
  return result;
}

CStreamBuffer* CBufferedStream::Find(long long position) {
  if (front_ && front_->Covers(position)) return front_;
  // The list's own enumerator walks without allocating or counting references.
  CListEnumerator<CStreamBuffer>* walk = buffers_->GetEnumerator();
  walk->Reset();
  for (int index = 0; walk->MoveNext(); ++index) {
    CStreamBuffer* buffer = walk->PeekCurrent();
    if (buffer->Covers(position)) {
      MoveToFront(index, buffer);
      return buffer;
    }
  }
  return nullptr;
}

void CBufferedStream::MoveToFront(int index, CStreamBuffer* buffer) {
  front_ = buffer;
  if (index == 0) return;
  // Keep the buffer alive while the list lets go of it.
  buffer->Acquire();
  RObject<CStreamBuffer> held(buffer);
  buffers_->Remove(index);
  buffers_->Insert(0, buffer);
}

int CBufferedStream::GetWindowsInUse() const {
  int used = 0;
  for (CStreamBuffer* buffer : *buffers_)
    if (buffer->GetOffset() >= 0) ++used;
  return used;
}

Result CBufferedStream::Recycle(long long position, int wanted, CStreamBuffer*& buffer) {
  int last = buffers_->GetCount() - 1;
  // Straight-through access: the window after the most recent one. Windows
  // in use sit at the front of the list, most recent first.
  const bool sequential = front_ && front_->GetOffset() >= 0 && position == front_->GetOffset() + bufferSize_;
  if (sequential) {
    int used = 0, lastUsed = -1, index = 0;
    for (CStreamBuffer* window : *buffers_) {
      if (window->GetOffset() >= 0) ++used, lastUsed = index;
      ++index;
    }
    if (used >= SequentialWindows) last = lastUsed;
  }
  RObject<CStreamBuffer> oldest;
  buffers_->Get(last, oldest.Out());
  buffer = oldest;
  Result result = oldest->Finalize(stream_);
  if (result.Failed()) return result;
  MoveToFront(last, oldest);
  const long long offset = position - position % bufferSize_;
  return oldest->Initialize(stream_, offset, static_cast<int>(position - offset) + wanted);
}

Result CBufferedStream::SettleOverlapping(long long position, long long count, bool forget) {
  CListEnumerator<CStreamBuffer>* walk = buffers_->GetEnumerator();
  walk->Reset();
  while (walk->MoveNext()) {
    CStreamBuffer* buffer = walk->PeekCurrent();
    if (!buffer->Overlaps(position, count)) continue;
    Result result = buffer->Finalize(stream_);
    if (result.Failed()) return result;
    if (forget) buffer->Invalidate();
  }
  return Result();
}

Result CBufferedStream::ReadDirect(long long position, unsigned char* buffer, int count, int& read) {
  read = 0;
  Result result = SettleOverlapping(position, count, false);
  if (result.Succeeded()) result = CStreamBuffer::MoveTo(stream_, position);
  if (result.Failed()) return result;
  return stream_->Read(buffer, count, &read);
}

Result CBufferedStream::WriteDirect(long long position, const unsigned char* buffer, int count, int& written) {
  written = 0;
  Result result = SettleOverlapping(position, count, true);
  if (result.Succeeded()) result = CStreamBuffer::MoveTo(stream_, position);
  if (result.Failed()) return result;
  return stream_->Write(buffer, count, &written);
}

Result CBufferedStream::ReadPass(long long position, unsigned char* buffer, int count, int& read) {
  read = 0;
  CStreamBuffer* window = Find(position);
  if (window && window->Available(position) == 0) {
    // The window ends before position: the stream was shorter when it was
    // filled. Refill it in case the stream has grown since.
    Result result = window->Finalize(stream_);
    if (result.Failed()) return result;
    result = window->Initialize(stream_, window->GetOffset(), static_cast<int>(position - window->GetOffset()) + count);
    if (result.Failed()) return result;
  }
  if (!window) {
    if (count > bufferSize_) return ReadDirect(position, buffer, count, read);
    Result result = Recycle(position, count, window);
    if (result.Failed()) return result;
  }
  return window->Read(position, buffer, count, &read);
}

Result CBufferedStream::WritePass(long long position, const unsigned char* buffer, int count, int& written) {
  written = 0;
  // A write larger than a window goes straight through, even where a window
  // holds its start: filling the rest of that window would only copy the
  // bytes once more and keep another window's memory in use.
  if (count > bufferSize_) return WriteDirect(position, buffer, count, written);
  CStreamBuffer* window = Find(position);
  if (window && !window->Accepts(position)) {
    // The window holds a run of bytes this write does not continue, over a
    // stream it cannot read to fill the gap: pass the run on and start anew.
    Result result = window->Finalize(stream_);
    if (result.Failed()) return result;
    window->Restart();
  }
  if (!window) {
    if (count > bufferSize_) return WriteDirect(position, buffer, count, written);
    // A write needs nothing read; the fill keeps what lies around it.
    Result result = Recycle(position, 0, window);
    if (result.Failed()) return result;
  }
  return window->Write(position, buffer, count, &written);
}

Result CBufferedStream::Advance(int done, int count, int* reported) {
  position_ += done;
  length_ = std::max(length_, position_);
  if (reported) {
    *reported = done;
  } else if (done < count) {
    return ResultEndOfStream();
  }
  return Result();
}

Result CBufferedStream::Read(unsigned char* buffer, int count, int* read) {
  if (read) *read = 0;
  if (!stream_ || !stream_->CanRead()) return ResultInvalidOperation();
  if (position_ < 0) return ResultEndOfStream();
  if (count < 0) return ResultArgumentOutOfRange();
  // Most requests of a parser fall inside the window it used last.
  if (front_->Available(position_) >= count) {
    CStreamBuffer::Copy(buffer, front_->At(position_), static_cast<std::size_t>(count));
    return Advance(count, count, read);
  }
  int done = 0;
  while (done < count) {
    int n = 0;
    Result result = ReadPass(position_ + done, buffer + done, count - done, n);
    if (result.Failed()) {
      Advance(done + n, count, read);
      return result;
    }
    if (n == 0) break;
    done += n;
  }
  return Advance(done, count, read);
}

int CBufferedStream::ReadByte() {
  if (stream_ && position_ >= 0 && front_->Available(position_) > 0 && stream_->CanRead()) {
    int byte = *front_->At(position_);
    Advance(1, 1, nullptr);
    return byte;
  }
  return CStream::ReadByte();
}

Result CBufferedStream::Write(const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  if (!stream_ || !stream_->CanWrite()) return ResultInvalidOperation();
  if (position_ < 0) return ResultEndOfStream();
  if (count < 0) return ResultArgumentOutOfRange();
  int done = 0;
  while (done < count) {
    int n = 0;
    Result result = WritePass(position_ + done, buffer + done, count - done, n);
    if (result.Failed()) {
      Advance(done + n, count, written);
      return result;
    }
    if (n == 0) break;
    done += n;
  }
  return Advance(done, count, written);
}

Result CBufferedStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  switch (origin) {
    case SeekOrigin::Begin:
      position_ = offset;
      break;
    case SeekOrigin::Current:
      position_ += offset;
      break;
    case SeekOrigin::End:
      position_ = length_ + offset;
      break;
    default:
      return ResultNotImplemented();
  }
  if (position) *position = position_;
  return Result();
}

Result CBufferedStream::Flush() {
  if (!stream_ || !stream_->CanWrite()) return Result();
  // Oldest first, so that overlapping writes reach the stream in order of use.
  std::vector<CStreamBuffer*> windows;
  for (CStreamBuffer* buffer : *buffers_) windows.push_back(buffer);
  for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
    Result result = (*it)->Finalize(stream_);
    if (result.Failed()) return result;
  }
  return stream_->Flush();
}

void CBufferedStream::Close() {
  Flush();
  if (stream_) stream_->Close();
  ReleaseStream();
  buffers_->Clear();
  front_ = nullptr;
}

}  // namespace Corvane::Mox
