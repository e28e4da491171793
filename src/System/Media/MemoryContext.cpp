#include "System/Media/MemoryContext.h"

#include <chrono>
#include <thread>

#include "System/ByteArray.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

template <class T, class Key>
T* CDataReferencePool<T, Key>::New() {
  return context_ ? context_->NewForPool(key_) : nullptr;
}

template class CDataReferencePool<CBufferDataReference, int>;
template class CDataReferencePool<CPixelBufferDataReference, PictureKey>;

namespace {

PictureKey KeyOf(const CVideoProperties* properties) {
  return PictureKey(properties->GetFormat(), properties->GetWidth(), properties->GetHeight());
}

}  // namespace

CMemoryContext::CMemoryContext() : CMemoryContext(TypeCode) {}

CMemoryContext::CMemoryContext(unsigned int type)
    : CObject(type), waitTime_(0), allocationLimit_(0), totalBytes_(0) {}

CMemoryContext::~CMemoryContext() {
  // References still out keep their pools alive; the pools must no longer
  // call back into this context.
  for (auto& [capacity, pool] : linearPools_) {
    pool->Detach();
    pool->Release();
  }
  for (auto& [key, pool] : pixelPools_) {
    pool->Detach();
    pool->Release();
  }
}

bool CMemoryContext::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

bool CMemoryContext::Allows(long long bytes) const {
  long long limit = allocationLimit_;
  return limit <= 0 || totalBytes_.load() + bytes <= limit;
}

CBufferDataReference* CMemoryContext::New(int n) {
  if (n < 0 || !Allows(n)) return nullptr;
  CBufferDataReference* reference = CreateDataReference(n);
  if (reference) totalBytes_ += reference->GetLength() ? reference->GetLength() : n;
  return reference;
}

CPixelBufferDataReference* CMemoryContext::New(const CVideoProperties* properties) {
  if (!properties) return nullptr;
  long long n = properties->GetSampleLength(0);
  if (!Allows(n)) return nullptr;
  CPixelBufferDataReference* reference = CreateDataReference(properties);
  if (reference) totalBytes_ += reference->GetLength() ? reference->GetLength() : n;
  return reference;
}

CBufferDataReference* CMemoryContext::NewForPool(int capacity) { return New(capacity); }

CPixelBufferDataReference* CMemoryContext::NewForPool(const PictureKey& key) {
  RObject<CVideoProperties> properties(new CVideoProperties());
  properties->SetFormat(std::get<0>(key));
  properties->SetWidth(std::get<1>(key));
  properties->SetHeight(std::get<2>(key));
  return New(properties.Get());
}

CLinearDataReferencePool* CMemoryContext::GetPool(int n) {
  if (n < 0) return nullptr;
  int capacity = 256;
  while (capacity <= n && capacity < (1 << 30)) capacity <<= 1;
  std::lock_guard<std::mutex> guard(tableLock_);
  CLinearDataReferencePool*& pool = linearPools_[capacity];
  if (!pool) pool = new CLinearDataReferencePool(this, capacity);
  return pool;
}

CPixelDataReferencePool* CMemoryContext::GetPool(const CVideoProperties* properties) {
  if (!properties) return nullptr;
  PictureKey key = KeyOf(properties);
  std::lock_guard<std::mutex> guard(tableLock_);
  CPixelDataReferencePool*& pool = pixelPools_[key];
  if (!pool) pool = new CPixelDataReferencePool(this, key);
  return pool;
}

template <class T, class Key>
T* CMemoryContext::Take(CDataReferencePool<T, Key>* pool, long long bytes) {
  auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(waitTime_);
  for (;;) {
    // CPool::Get would block for good when the limit refuses a new object,
    // so it is asked only when it can answer.
    if (pool->GetAvailableCount() > 0 || Allows(bytes)) return pool->Get();
    if (std::chrono::steady_clock::now() >= deadline) return nullptr;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

CBufferDataReference* CMemoryContext::GetDataReference(int n) {
  CLinearDataReferencePool* pool = GetPool(n);
  if (!pool) return nullptr;
  CBufferDataReference* reference = Take(pool, pool->GetKey());
  if (reference) reference->SetLength(n);
  return reference;
}

CPixelBufferDataReference* CMemoryContext::GetDataReference(const CVideoProperties* properties) {
  CPixelDataReferencePool* pool = GetPool(properties);
  return pool ? Take(pool, properties->GetSampleLength(0)) : nullptr;
}

CBufferDataReference* CMemoryContext::CreateDataReference(int) { return nullptr; }

CPixelBufferDataReference* CMemoryContext::CreateDataReference(const CVideoProperties*) { return nullptr; }

CHostMemoryContext::CHostMemoryContext() : CMemoryContext(TypeCode) {}

bool CHostMemoryContext::IsType(unsigned int type) const { return type == TypeCode || CMemoryContext::IsType(type); }

CBufferDataReference* CHostMemoryContext::CreateDataReference(int n) {
  RObject<CByteArray> bytes(new CByteArray(n, 64));
  return new CBufferDataReference(bytes.Get());
}

CPixelBufferDataReference* CHostMemoryContext::CreateDataReference(const CVideoProperties* properties) {
  if (!properties) return nullptr;
  long long length = properties->GetSampleLength(0);
  if (length <= 0 || length > 0x7FFFFFFF) return nullptr;
  RObject<CByteArray> bytes(new CByteArray(static_cast<int>(length), 64));
  return new CPixelBufferDataReference(bytes.Get(), properties->GetStride(0),
                                       Area<int>(properties->GetWidth(), properties->GetHeight()));
}

}  // namespace Corvane::Mox
