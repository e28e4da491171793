#pragma once
// CLockedDataReference ("lock"): holds another reference locked for as long
// as it lives. Construction acquires and locks the target (a failure to lock
// is thrown); destruction unlocks and releases it. Length, data and SetLength
// forward to the target.

#include "System/Media/DataReference.h"

namespace Corvane::Mox {

class CLockedDataReference : public CDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("lock");

  CLockedDataReference(CDataReference* target, int mode);
  ~CLockedDataReference() override;

  bool IsType(unsigned int type) const override;
  // Already locked: both succeed at once.
  Result Lock(int mode) override;
  Result Unlock() override;
  int GetLength() override;
  Result SetLength(int length) override;
  unsigned char* GetData() override;

  // The locked reference, borrowed.
  CDataReference* GetTarget() const { return target_; }

 private:
  CDataReference* target_;
};

// Locked for reading.
class CSharedDataReference : public CLockedDataReference {
 public:
  explicit CSharedDataReference(CDataReference* target) : CLockedDataReference(target, LockShared) {}
};

// Locked for writing.
class CExclusiveDataReference : public CLockedDataReference {
 public:
  explicit CExclusiveDataReference(CDataReference* target) : CLockedDataReference(target, LockExclusive) {}
};

}  // namespace Corvane::Mox
