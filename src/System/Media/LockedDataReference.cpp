#include "System/Media/LockedDataReference.h"

namespace Corvane::Mox {

CLockedDataReference::CLockedDataReference(CDataReference* target, int mode)
    : CDataReference(TypeCode), target_(target) {
  if (!target_) return;
  Result result = target_->Lock(mode);
  if (result.Failed()) {
    target_ = nullptr;
    throw result;
  }
  target_->Acquire();
}

CLockedDataReference::~CLockedDataReference() {
  if (target_) {
    target_->Unlock();
    target_->Release();
  }
}

bool CLockedDataReference::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

Result CLockedDataReference::Lock(int) { return Result(); }

Result CLockedDataReference::Unlock() { return Result(); }

int CLockedDataReference::GetLength() { return target_ ? target_->GetLength() : 0; }

Result CLockedDataReference::SetLength(int length) {
  return target_ ? target_->SetLength(length) : Result(ResultNullPointer());
}

unsigned char* CLockedDataReference::GetData() { return target_ ? target_->GetData() : nullptr; }

}  // namespace Corvane::Mox
