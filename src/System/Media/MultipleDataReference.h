#pragma once
// CMultipleDataReference ("many"): alternative representations of one
// payload, for example a compressed access unit and the decoded frame.
// Length, data, locking and SetLength act on the first memory ("dram")
// member; without one, length and data are 0/null and the rest succeed
// without effect.

#include "System/Collections/List.h"
#include "System/Media/DataReference.h"

namespace Corvane::Mox {

class CMultipleDataReference : public CDataReference {
 public:
  static constexpr unsigned int TypeCode = FourCC("many");

  CMultipleDataReference();
  ~CMultipleDataReference() override;

  bool IsType(unsigned int type) const override;
  Result Lock(int mode) override;
  Result Unlock() override;
  int GetLength() override;
  Result SetLength(int length) override;
  unsigned char* GetData() override;

  Result Add(CDataReference* reference);
  // The first member answering IsType(tag), acquired; null when none.
  CDataReference* Get(unsigned int tag) const;
  int GetCount() const { return members_->GetCount(); }

 private:
  CList<CDataReference>* members_;
};

}  // namespace Corvane::Mox
