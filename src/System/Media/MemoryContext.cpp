#include "System/Media/MemoryContext.h"

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

bool CMemoryContext::Reserve(long long bytes) {
  const long long limit = allocationLimit_.load();
  if (limit <= 0) {
    totalBytes_ += bytes;
    return true;
  }
  long long current = totalBytes_.load();
  do {
    if (current + bytes > limit) return false;
  } while (!totalBytes_.compare_exchange_weak(current, current + bytes));
  return true;
}

template <class T, class Make>
T* CMemoryContext::Allocate(long long bytes, Make make) {
  if (bytes < 0 || !Reserve(bytes)) return nullptr;
  T* reference = make();
  if (!reference) {
    Unreserve(bytes);
    return nullptr;
  }
  // A reference may hold more than was asked (a rounded-up buffer): count what it holds.
  const long long held = reference->GetLength() ? reference->GetLength() : bytes;
  Unreserve(bytes - held);
  return reference;
}

CBufferDataReference* CMemoryContext::New(int n) {
  return Allocate<CBufferDataReference>(n, [&] { return CreateDataReference(n); });
}

CPixelBufferDataReference* CMemoryContext::New(const CVideoProperties* properties) {
  if (!properties) return nullptr;
  return Allocate<CPixelBufferDataReference>(properties->GetSampleLength(0),
                                             [&] { return CreateDataReference(properties); });
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

CBufferDataReference* CMemoryContext::GetDataReference(int n) {
  CLinearDataReferencePool* pool = GetPool(n);
  if (!pool) return nullptr;
  CBufferDataReference* reference = pool->Get(waitTime_.load());
  if (reference) reference->SetLength(n);
  return reference;
}

CPixelBufferDataReference* CMemoryContext::GetDataReference(const CVideoProperties* properties) {
  CPixelDataReferencePool* pool = GetPool(properties);
  return pool ? pool->Get(waitTime_.load()) : nullptr;
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
