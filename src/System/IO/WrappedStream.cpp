#include "System/IO/WrappedStream.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int NoWrapperType = FourCC("rrst");

}  // namespace

CWrappedStream::CWrappedStream(CStream* stream) : CWrappedStream(TypeCode, stream) {}

CWrappedStream::CWrappedStream(unsigned int type, CStream* stream) : CStream(type), stream_(stream) {
  if (stream_) stream_->Acquire();
}

CWrappedStream::~CWrappedStream() { ReleaseStream(); }

void CWrappedStream::ReleaseStream() {
  CStream* stream = stream_;
  stream_ = nullptr;
  if (stream) stream->Release();
}

CStream* CWrappedStream::GetStream() const {
  if (stream_) stream_->Acquire();
  return stream_;
}

bool CWrappedStream::IsType(unsigned int type) const {
  if (stream_ && stream_->GetType() == NoWrapperType) return false;
  return type == TypeCode || CStream::IsType(type);
}

Result CWrappedStream::Enter() const { return stream_ ? stream_->Enter() : ResultNullPointer(); }
// Inverted sense, as for every monitor: true means the monitor was not taken.
bool CWrappedStream::TryEnter() const { return stream_ ? stream_->TryEnter() : true; }
bool CWrappedStream::Wait() const { return stream_ ? stream_->Wait() : false; }
bool CWrappedStream::Wait(int milliseconds) const { return stream_ ? stream_->Wait(milliseconds) : false; }
Result CWrappedStream::Notify() const { return stream_ ? stream_->Notify() : ResultNullPointer(); }
Result CWrappedStream::NotifyAll() const { return stream_ ? stream_->NotifyAll() : ResultNullPointer(); }
Result CWrappedStream::Exit() const { return stream_ ? stream_->Exit() : ResultNullPointer(); }

bool CWrappedStream::IsDataAvailable() { return stream_ && stream_->IsDataAvailable(); }

Result CWrappedStream::Control(unsigned int code, int length, unsigned char* data) {
  return stream_ ? stream_->Control(code, length, data) : ResultNotSupported();
}

bool CWrappedStream::CanRead() { return stream_ && stream_->CanRead(); }
bool CWrappedStream::CanSeek() { return stream_ && stream_->CanSeek(); }
bool CWrappedStream::CanWrite() { return stream_ && stream_->CanWrite(); }
long long CWrappedStream::GetLength() { return stream_ ? stream_->GetLength() : -1; }
long long CWrappedStream::GetAvailableLength() { return stream_ ? stream_->GetAvailableLength() : -1; }
long long CWrappedStream::GetPosition() { return stream_ ? stream_->GetPosition() : -1; }

Result CWrappedStream::SetLength(long long length) {
  return stream_ ? stream_->SetLength(length) : ResultInvalidOperation();
}

Result CWrappedStream::Read(unsigned char* buffer, int count, int* read) {
  if (read) *read = 0;
  return stream_ ? stream_->Read(buffer, count, read) : ResultInvalidOperation();
}

Result CWrappedStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  return stream_ ? stream_->Seek(offset, origin, position) : ResultInvalidOperation();
}

Result CWrappedStream::Write(const unsigned char* buffer, int count, int* written) {
  if (written) *written = 0;
  return stream_ ? stream_->Write(buffer, count, written) : ResultInvalidOperation();
}

Result CWrappedStream::Flush() { return stream_ ? stream_->Flush() : ResultOK(); }

void CWrappedStream::Close() {
  if (stream_) stream_->Close();
}

}  // namespace Corvane::Mox
