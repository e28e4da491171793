#pragma once
// CConcatenatingStream: several streams opened by the caller, read as one.
// A current index moves forward as the streams are consumed. Seeking follows
// fixed rules that differ by origin (see Seek); callers such as the segment
// readers of adaptive-streaming packages depend on them as they are.

#include "System/Collections/List.h"
#include "System/IO/Stream.h"

namespace Corvane::Mox {

class CConcatenatingStream : public CStream {
 public:
  static constexpr unsigned int TypeCode = FourCC("cnst");

  CConcatenatingStream();
  ~CConcatenatingStream() override;

  // Appends (acquires) stream as it is, without rewinding it.
  Result Add(CStream* stream);
  int GetCount() const { return streams_->GetCount(); }
  int GetCurrentIndex() const { return index_; }

  // True when every stream says so (an empty list included).
  bool CanRead() override;
  bool CanSeek() override;
  bool CanWrite() override;
  long long GetLength() override;
  long long GetAvailableLength() override;
  long long GetPosition() override;
  using CStream::Read;
  using CStream::Write;
  Result Read(unsigned char* buffer, int count, int* read) override;
  // Throws the failure of the read.
  int ReadByte() override;
  // Begin: absolute. Current: moves forward through the streams, backwards
  // only within the current one, and reports the distance covered plus the
  // new position in the stream reached. End: walks back from the last
  // stream and reports the lengths after the stream reached plus the
  // position in it. An offset equal to a stream's length stays at its end.
  Result Seek(long long offset, SeekOrigin origin, long long* position) override;
  // The whole request goes to the current stream; the index never moves.
  Result Write(const unsigned char* buffer, int count, int* written) override;
  Result Flush() override;
  void Close() override;

 private:
  // The stream at index, borrowed.
  CStream* At(int index) const;
  Result Rewind();
  Result SeekFromBegin(long long offset, long long* position);
  Result SeekFromCurrent(long long offset, long long* position);
  Result SeekFromEnd(long long offset, long long* position);

  CList<CStream>* streams_;
  int index_;
};

}  // namespace Corvane::Mox
