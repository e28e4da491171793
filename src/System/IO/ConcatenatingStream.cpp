#include "System/IO/ConcatenatingStream.h"

namespace Corvane::Mox {

CConcatenatingStream::CConcatenatingStream() : CStream(TypeCode), streams_(new CList<CStream>()), index_(0) {}

CConcatenatingStream::~CConcatenatingStream() { streams_->Release(); }

Result CConcatenatingStream::Add(CStream* stream) { return streams_->Add(stream); }

CStream* CConcatenatingStream::At(int index) const {
  RObject<CStream> stream;
  streams_->Get(index, stream.Out());
  // The list keeps its own reference for as long as the stream is listed.
  return stream;
}

bool CConcatenatingStream::CanRead() {
  for (CStream* stream : *streams_)
    if (!stream->CanRead()) return false;
  return true;
}

bool CConcatenatingStream::CanSeek() {
  for (CStream* stream : *streams_)
    if (!stream->CanSeek()) return false;
  return true;
}

bool CConcatenatingStream::CanWrite() {
  for (CStream* stream : *streams_)
    if (!stream->CanWrite()) return false;
  return true;
}

long long CConcatenatingStream::GetLength() {
  long long total = 0;
  for (CStream* stream : *streams_) total += stream->GetLength();
  return total;
}

long long CConcatenatingStream::GetAvailableLength() {
  long long total = 0;
  for (CStream* stream : *streams_) total += stream->GetAvailableLength();
  return total;
}

long long CConcatenatingStream::GetPosition() {
  long long before = 0;
  int index = 0;
  for (CStream* stream : *streams_) {
    if (index++ == index_) return before + stream->GetPosition();
    before += stream->GetLength();
  }
  return before;
}

Result CConcatenatingStream::Read(unsigned char* buffer, int count, int* read) {
  int delivered = 0;
  while (index_ < streams_->GetCount()) {
    CStream* source = At(index_);
    if (source->GetPosition() < source->GetLength()) {
      int n = 0;
      Result result = source->Read(buffer + delivered, count - delivered, &n);
      if (result.Failed()) return result;
      delivered += n;
      if (delivered >= count) break;
    }
    ++index_;
  }
  if (read) *read = delivered;
  return ResultOK();
}

int CConcatenatingStream::ReadByte() {
  unsigned char byte = 0;
  int read = 0;
  Read(&byte, 1, &read).ThrowIfFailed();
  return read == 1 ? byte : -1;
}

Result CConcatenatingStream::Rewind() {
  for (CStream* stream : *streams_) {
    Result result = stream->Seek(0, SeekOrigin::Begin, nullptr);
    if (result.Failed()) return result;
  }
  return ResultOK();
}

Result CConcatenatingStream::SeekFromBegin(long long offset, long long* position) {
  Result result = Rewind();
  if (result.Failed()) return result;
  long long skipped = 0;
  for (index_ = 0; index_ < streams_->GetCount(); ++index_) {
    CStream* stream = At(index_);
    long long length = stream->GetLength();
    if (offset <= length) {
      long long reached = 0;
      result = stream->Seek(offset, SeekOrigin::Begin, &reached);
      if (result.Succeeded() && position) *position = skipped + reached;
      return result;
    }
    offset -= length;
    skipped += length;
  }
  if (position) *position = skipped;
  return ResultOK();
}

Result CConcatenatingStream::SeekFromCurrent(long long offset, long long* position) {
  long long covered = 0;
  while (index_ < streams_->GetCount()) {
    CStream* stream = At(index_);
    long long here = stream->GetPosition();
    long long length = stream->GetLength();
    if (here >= length) {
      ++index_;
      continue;
    }
    long long remaining = length - here;
    if (offset <= remaining) {
      long long reached = 0;
      Result result = stream->Seek(offset, SeekOrigin::Current, &reached);
      if (result.Succeeded() && position) *position = covered + reached;
      return result;
    }
    offset -= remaining;
    covered += remaining;
    ++index_;
  }
  if (position) *position = covered;
  return ResultOK();
}

Result CConcatenatingStream::SeekFromEnd(long long offset, long long* position) {
  Result result = Rewind();
  if (result.Failed()) return result;
  long long after = 0;
  for (int index = streams_->GetCount() - 1; index >= 0; --index) {
    CStream* stream = At(index);
    long long length = stream->GetLength();
    if (offset <= length) {
      index_ = index;
      long long reached = 0;
      result = stream->Seek(offset, SeekOrigin::End, &reached);
      if (result.Succeeded() && position) *position = after + reached;
      return result;
    }
    offset -= length;
    after += length;
  }
  index_ = 0;
  if (position) *position = after;
  return ResultOK();
}

Result CConcatenatingStream::Seek(long long offset, SeekOrigin origin, long long* position) {
  switch (origin) {
    case SeekOrigin::Begin:
      return SeekFromBegin(offset, position);
    case SeekOrigin::Current:
      return SeekFromCurrent(offset, position);
    case SeekOrigin::End:
      return SeekFromEnd(offset, position);
  }
  return ResultUnexpected();
}

Result CConcatenatingStream::Write(const unsigned char* buffer, int count, int* written) {
  if (!CanWrite()) return ResultIOError();
  if (index_ >= streams_->GetCount()) return ResultIOError("no stream at index %d", index_);
  return At(index_)->Write(buffer, count, written);
}

Result CConcatenatingStream::Flush() {
  for (CStream* stream : *streams_) {
    Result result = stream->Flush();
    if (result.Failed()) return result;
  }
  return ResultOK();
}

void CConcatenatingStream::Close() {
  Flush();
  for (CStream* stream : *streams_) stream->Close();
}

}  // namespace Corvane::Mox
