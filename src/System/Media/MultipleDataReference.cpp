#include "System/Media/MultipleDataReference.h"

namespace Corvane::Mox {

CMultipleDataReference::CMultipleDataReference() : CDataReference(TypeCode), members_(new CList<CDataReference>()) {}

CMultipleDataReference::~CMultipleDataReference() { members_->Release(); }

bool CMultipleDataReference::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

Result CMultipleDataReference::Add(CDataReference* reference) {
  if (!reference) return ResultArgumentNull();
  return members_->Add(reference);
}

CDataReference* CMultipleDataReference::Get(unsigned int tag) const {
  for (CDataReference* member : *members_) {
    if (member->IsType(tag)) {
      member->Acquire();
      return member;
    }
  }
  return nullptr;
}

Result CMultipleDataReference::Lock(int mode) {
  RObject<CDataReference> memory(Get(FourCC("dram")));
  return memory ? memory->Lock(mode) : Result();
}

Result CMultipleDataReference::Unlock() {
  RObject<CDataReference> memory(Get(FourCC("dram")));
  return memory ? memory->Unlock() : Result();
}

int CMultipleDataReference::GetLength() {
  RObject<CDataReference> memory(Get(FourCC("dram")));
  return memory ? memory->GetLength() : 0;
}

Result CMultipleDataReference::SetLength(int length) {
  RObject<CDataReference> memory(Get(FourCC("dram")));
  return memory ? memory->SetLength(length) : Result();
}

unsigned char* CMultipleDataReference::GetData() {
  RObject<CDataReference> memory(Get(FourCC("dram")));
  return memory ? memory->GetData() : nullptr;
}

}  // namespace Corvane::Mox
