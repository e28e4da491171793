#include "System/PoolObject.h"

namespace Corvane::Mox {

CPoolObject::CPoolObject(unsigned int type) : CObject(type, &CPoolObject::Reclaim), pool_(nullptr) {}

CPoolObject::~CPoolObject() {
  if (pool_) pool_->Release();
}

void CPoolObject::Reclaim(CObject* object) {
  // Only CPoolObject installs this hook.
  auto* pooled = static_cast<CPoolObject*>(object);
  CPoolBase* pool = pooled->pool_;
  if (!pool) return;
  pooled->ReclaimCleanUp();
  // The object's reference to the pool is ours until Put has returned; only
  // then may it go, since it can be the pool's last.
  pooled->pool_ = nullptr;
  pool->Put(pooled);
  pool->Release();
}

void CPoolObject::ReclaimCleanUp() {}

void CPoolBase::Pool(CPoolObject* object) {
  if (object->pool_ == this) return;
  Acquire();
  CPoolBase* old = object->pool_;
  object->pool_ = this;
  if (old) old->Release();
}

}  // namespace Corvane::Mox
