#pragma once
// CObject: the reference-counted root of every shared object of the library,
// and RObject<T>, the owning reference holder.

#include <atomic>
#include <cstddef>

#include "System/Result.h"
#include "System/Types.h"

namespace Corvane::Mox {

class CLock;
class CString;

class CObject {
 public:
  using ReclaimHook = void (*)(CObject*);

  CObject();
  explicit CObject(unsigned int type, ReclaimHook reclaim = nullptr);
  CObject(const CObject&) = delete;
  CObject& operator=(const CObject&) = delete;
  virtual ~CObject();

  virtual bool IsType(unsigned int type) const;
  virtual bool Equals(const CObject* other) const;
  virtual int GetHashCode() const;
  virtual CString* ToString() const;

  // The monitor: a recursive mutex and a condition variable, created on first use.
  virtual void Synchronize() const;
  virtual Result Enter() const;
  // Inverted sense: true when the monitor is held elsewhere, false when it was taken.
  virtual bool TryEnter() const;
  virtual bool Wait() const;
  virtual bool Wait(int milliseconds) const;
  virtual Result Notify() const;
  virtual Result NotifyAll() const;
  virtual Result Exit() const;

  unsigned int GetType() const { return type_; }
  void SetType(unsigned int type) { type_ = type; }

  void Acquire() const { references_.fetch_add(1, std::memory_order_relaxed); }
  void Release() const;
  int GetReferences() const { return references_.load(std::memory_order_acquire); }

  static void* operator new(std::size_t size);
  static void operator delete(void* p) noexcept;

  // Scoped monitor guard; a null object makes both steps no-ops.
  class CAutoLock {
   public:
    explicit CAutoLock(const CObject* object) : object_(object) {
      if (object_) object_->Enter();
    }
    ~CAutoLock() {
      if (object_) object_->Exit();
    }
    CAutoLock(const CAutoLock&) = delete;
    CAutoLock& operator=(const CAutoLock&) = delete;

   private:
    const CObject* object_;
  };

 protected:
  CLock* GetLock() const {
    CLock* lock = lock_.load(std::memory_order_acquire);
    if (!lock) {
      Synchronize();
      lock = lock_.load(std::memory_order_acquire);
    }
    return lock;
  }

 private:
  unsigned int type_;
  mutable std::atomic<int> references_;
  mutable std::atomic<CLock*> lock_;
  ReclaimHook reclaim_;
};

// Owns one reference to a CObject subclass. Construction from a raw pointer
// takes over the caller's reference; copies acquire; destruction releases.
template <class T>
class RObject {
 public:
  RObject() noexcept : p_(nullptr) {}
  RObject(T* p) noexcept : p_(p) {}  // NOLINT: adopting a raw reference is the common case
  RObject(const RObject& other) noexcept : p_(other.p_) {
    if (p_) p_->Acquire();
  }
  RObject(RObject&& other) noexcept : p_(other.p_) { other.p_ = nullptr; }
  virtual ~RObject() { Clear(); }

  RObject& operator=(const RObject& other) noexcept {
    if (other.p_) other.p_->Acquire();
    T* old = p_;
    p_ = other.p_;
    if (old) old->Release();
    return *this;
  }
  RObject& operator=(RObject&& other) noexcept {
    if (this != &other) {
      T* old = p_;
      p_ = other.p_;
      other.p_ = nullptr;
      if (old) old->Release();
    }
    return *this;
  }
  // Adopts p's reference, releasing the old target.
  RObject& operator=(T* p) noexcept {
    T* old = p_;
    p_ = p;
    if (old) old->Release();
    return *this;
  }

  T* Get() const noexcept { return p_; }
  T* operator->() const noexcept { return p_; }
  T& operator*() const noexcept { return *p_; }
  operator T*() const noexcept { return p_; }  // NOLINT: raw pointers are the library's calling convention
  explicit operator bool() const noexcept { return p_ != nullptr; }

  // Hands the reference to the caller and clears the holder.
  T* Detach() noexcept {
    T* p = p_;
    p_ = nullptr;
    return p;
  }
  // For out-parameters of type T*&: releases the old target and exposes the slot.
  T*& Out() noexcept {
    Clear();
    return p_;
  }
  void Clear() noexcept {
    if (p_) {
      T* old = p_;
      p_ = nullptr;
      old->Release();
    }
  }

 private:
  T* p_;
};

// Process-wide initialisation flag, set when the library has been loaded.
bool IsLibraryInitialized();

}  // namespace Corvane::Mox
