#pragma once
// CPoolObject: an object that goes back to the pool that made it when its last
// reference is released, instead of being freed; CPoolBase: the pool side of
// that contract.
//
// An object in use holds one reference to its pool, which keeps the pool alive
// until everything it handed out has come back. An idle object sitting in the
// pool holds none (that would be a cycle); the pool binds it again when it
// hands it out.

#include "System/Object.h"

namespace Corvane::Mox {

class CPoolBase;

class CPoolObject : public CObject {
 public:
  explicit CPoolObject(unsigned int type);
  ~CPoolObject() override;

  // The reclaim hook: hands an object that belongs to a pool back to it.
  static void Reclaim(CObject* object);
  // Runs before the object goes back to its pool; drops whatever should not
  // survive into the next use.
  virtual void ReclaimCleanUp();

  // The pool the object is bound to, borrowed; null when idle or unpooled.
  CPoolBase* GetPool() const { return pool_; }

 private:
  friend class CPoolBase;

  CPoolBase* pool_;
};

class CPoolBase : public CObject {
 public:
  CPoolBase() = default;

  // Takes an object back (acquiring it) so that a later Get can hand it out.
  virtual void Put(CPoolObject* object) = 0;
  // Makes a new object, or returns null when no more may be made.
  virtual CPoolObject* New() = 0;

  // Binds object to this pool, releasing its previous pool.
  void Pool(CPoolObject* object);
};

}  // namespace Corvane::Mox
