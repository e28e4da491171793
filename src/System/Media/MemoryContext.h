#pragma once
// Memory contexts hand out memory data references from pools: linear
// buffers by capacity (powers of two from 256 bytes) and picture buffers by
// picture description. CMemoryContext ("mctx") keeps the pools, the
// allocation limit and the running byte count; subclasses say where the
// memory lives: CHostMemoryContext ("hctx") in host memory.

#include <atomic>
#include <map>
#include <mutex>
#include <tuple>

#include "System/Media/MemoryDataReference.h"
#include "System/Media/PixelDataReference.h"
#include "System/Pool.h"

namespace Corvane::Mox {

class CMemoryContext;
class CVideoProperties;

// A pool whose new references come from a context for one key (a capacity
// or a picture description). The pool does not keep the context alive: the
// context detaches its pools when it goes.
template <class T, class Key>
class CDataReferencePool : public CPool<T> {
 public:
  CDataReferencePool(CMemoryContext* context, const Key& key) : context_(context), key_(key) {}
  T* New() override;
  void Detach() { context_ = nullptr; }
  const Key& GetKey() const { return key_; }

 private:
  CMemoryContext* context_;
  Key key_;
};

// Format, width, height: what a picture buffer's size depends on.
using PictureKey = std::tuple<unsigned int, int, int>;
using CLinearDataReferencePool = CDataReferencePool<CBufferDataReference, int>;
using CPixelDataReferencePool = CDataReferencePool<CPixelBufferDataReference, PictureKey>;

class CMemoryContext : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("mctx");

  CMemoryContext();
  ~CMemoryContext() override;

  bool IsType(unsigned int type) const override;

  // Milliseconds a pool request may wait for a free reference.
  int GetWaitTime() const { return waitTime_.load(); }
  void SetWaitTime(int milliseconds) { waitTime_.store(milliseconds); }
  // Bytes; 0 or less means unlimited.
  long long GetAllocationLimit() const { return allocationLimit_.load(); }
  void SetAllocationLimit(long long bytes) { allocationLimit_.store(bytes); }
  long long GetTotalBytes() const { return totalBytes_.load(); }

  // A new reference of n bytes, counted in TotalBytes; null past the limit.
  CBufferDataReference* New(int n);
  CPixelBufferDataReference* New(const CVideoProperties* properties);
  // The pool serving n bytes: capacity the smallest power of two above n and
  // at least 256; null for a negative n. Borrowed: the context keeps it.
  CLinearDataReferencePool* GetPool(int n);
  CPixelDataReferencePool* GetPool(const CVideoProperties* properties);
  // A pooled reference (its length set to n), waiting at most WaitTime for
  // one to come back when the limit allows no new one; null on time-out.
  CBufferDataReference* GetDataReference(int n);
  CPixelBufferDataReference* GetDataReference(const CVideoProperties* properties);

  // Make a new reference for a pool; the base context makes none.
  virtual CBufferDataReference* CreateDataReference(int n);
  virtual CPixelBufferDataReference* CreateDataReference(const CVideoProperties* properties);

 protected:
  explicit CMemoryContext(unsigned int type);

 private:
  friend class CDataReferencePool<CBufferDataReference, int>;
  friend class CDataReferencePool<CPixelBufferDataReference, PictureKey>;

  CBufferDataReference* NewForPool(int capacity);
  CPixelBufferDataReference* NewForPool(const PictureKey& key);
  // Counts bytes against the limit in one step, so that threads allocating
  // at once cannot pass the limit together; false when it would be passed.
  bool Reserve(long long bytes);
  // Gives back a reservation (or corrects it to what was really allocated).
  void Unreserve(long long bytes) { totalBytes_ -= bytes; }
  // A new reference of `bytes` from make(), reserved against the limit.
  template <class T, class Make>
  T* Allocate(long long bytes, Make make);

  std::atomic<int> waitTime_;
  std::atomic<long long> allocationLimit_;
  std::atomic<long long> totalBytes_;
  std::mutex tableLock_;
  std::map<int, CLinearDataReferencePool*> linearPools_;
  std::map<PictureKey, CPixelDataReferencePool*> pixelPools_;
};

class CHostMemoryContext : public CMemoryContext {
 public:
  static constexpr unsigned int TypeCode = FourCC("hctx");

  CHostMemoryContext();

  bool IsType(unsigned int type) const override;
  // A byte array of n bytes aligned to 64, in a buffer reference.
  CBufferDataReference* CreateDataReference(int n) override;
  // A picture buffer sized by the description's plane layout.
  CPixelBufferDataReference* CreateDataReference(const CVideoProperties* properties) override;
};

}  // namespace Corvane::Mox
