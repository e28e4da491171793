#pragma once
// CByteQueue: a byte FIFO made of queued byte arrays. Arbitrary byte counts
// come out of it; a range that lies within one buffer comes out as a view of
// that buffer (no copy), a range spanning buffers as a new copy. The plain
// forms throw their failures as Result; the forms with an out parameter
// return them.

#include "System/ByteArray.h"
#include "System/Collections/List.h"

namespace Corvane::Mox {

class CByteQueue : public CObject {
 public:
  CByteQueue();
  ~CByteQueue() override;

  // Queues the array itself (acquired).
  void Enqueue(CByteArray* array);
  // Queues a view of the first count bytes of array.
  void Enqueue(CByteArray* array, int count);
  // Queues a copy of count bytes.
  void Enqueue(unsigned char* bytes, int count);

  // Everything queued, as one new array; the queue becomes empty.
  CByteArray* Dequeue();
  // The next count bytes, acquired.
  CByteArray* Dequeue(int count);
  Result Dequeue(CByteArray*& out);
  Result Dequeue(int count, CByteArray*& out);

  int GetLength() const { return length_; }
  bool IsEmpty() const { return length_ == 0; }
  void Clear();

 private:
  // Makes the next queued buffer the head, releasing the old head.
  bool NextHead();
  int HeadRemaining() const { return head_ ? head_->GetLength() - headOffset_ : 0; }
  // Copies count bytes starting at the head into out, moving through buffers.
  void CopyOut(unsigned char* out, int count);

  CList<CByteArray>* buffers_;
  CByteArray* head_;
  int headOffset_;
  int length_;
};

}  // namespace Corvane::Mox
