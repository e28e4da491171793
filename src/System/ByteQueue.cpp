#include "System/ByteQueue.h"

#include <algorithm>
#include <cstring>

namespace Corvane::Mox {

CByteQueue::CByteQueue() : buffers_(new CList<CByteArray>()), head_(nullptr), headOffset_(0), length_(0) {}

CByteQueue::~CByteQueue() {
  if (head_) head_->Release();
  buffers_->Release();
}

void CByteQueue::Enqueue(CByteArray* array) {
  if (!array) throw ResultArgumentNull();
  buffers_->Add(array).ThrowIfFailed();
  length_ += array->GetLength();
}

void CByteQueue::Enqueue(CByteArray* array, int count) {
  if (!array) throw ResultArgumentNull();
  if (count > array->GetLength()) throw ResultBufferTooSmall();
  if (count < 0) throw ResultArgumentOutOfRange();
  RObject<CByteArray> view(new CByteArray(count, array->GetData(), array));
  Enqueue(view);
}

void CByteQueue::Enqueue(unsigned char* bytes, int count) {
  if (!bytes) throw ResultArgumentNull();
  RObject<CByteArray> copy(new CByteArray(bytes, count));
  Enqueue(copy);
}

bool CByteQueue::NextHead() {
  CByteArray* next = buffers_->Dequeue();
  if (!next) return false;
  if (head_) head_->Release();
  head_ = next;
  headOffset_ = 0;
  return true;
}

void CByteQueue::CopyOut(unsigned char* out, int count) {
  while (count > 0) {
    if (HeadRemaining() == 0 && !NextHead()) break;
    int n = std::min(count, HeadRemaining());
    std::memcpy(out, head_->GetData() + headOffset_, static_cast<std::size_t>(n));
    out += n;
    count -= n;
    headOffset_ += n;
    length_ -= n;
  }
}

CByteArray* CByteQueue::Dequeue() {
  RObject<CByteArray> all(new CByteArray(length_, 1));
  CopyOut(all->GetData(), length_);
  Clear();
  return all.Detach();
}

CByteArray* CByteQueue::Dequeue(int count) {
  if (count < 0) throw ResultArgumentOutOfRange();
  // A used-up head gives way to the next buffer, so that a range lying in
  // that buffer still comes out as a view.
  while ((!head_ || HeadRemaining() == 0) && NextHead()) {
  }
  if (!head_) throw ResultError("no more data in queue");
  if (count > length_) throw ResultError("not enough bytes in queue");
  if (HeadRemaining() >= count) {
    auto* view = new CByteArray(count, head_->GetData() + headOffset_, head_);
    headOffset_ += count;
    length_ -= count;
    return view;
  }
  RObject<CByteArray> copy(new CByteArray(count, 1));
  CopyOut(copy->GetData(), count);
  return copy.Detach();
}

Result CByteQueue::Dequeue(CByteArray*& out) {
  out = nullptr;
  try {
    out = Dequeue();
  } catch (const Result& result) {
    return result;
  }
  return ResultOK();
}

Result CByteQueue::Dequeue(int count, CByteArray*& out) {
  out = nullptr;
  try {
    out = Dequeue(count);
  } catch (const Result& result) {
    return result;
  }
  return ResultOK();
}

void CByteQueue::Clear() {
  if (head_) head_->Release();
  head_ = nullptr;
  buffers_->Clear();
  headOffset_ = 0;
  length_ = 0;
}

}  // namespace Corvane::Mox
