#include "System/Media/DataReference.h"

#include "System/FourString.h"
#include "System/Media/MultipleDataReference.h"
#include "System/Media/StorageDataReference.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Properties.h"

namespace Corvane::Mox {

CDataReference::CDataReference(unsigned int type) : CPoolObject(type) {}

CDataReference::~CDataReference() = default;

Result CDataReference::Lock(int mode) { return lock_.Enter((mode & LockExclusive) != 0); }

Result CDataReference::Unlock() { return lock_.Exit(); }

Result CDataReference::SetLength(int) { return ResultNotSupported(); }

int CDataReference::GetEstimatedLength(CMediaProperties*) { return GetLength(); }

int CDataReference::GetSize() const { return 0; }

Result CDataReference::Read(CBinaryReader*) { return Result(); }

Result CDataReference::Write(CBinaryWriter*) const { return Result(); }

CProperties* CDataReference::GetDescriptiveRepresentation() const {
  RObject<CProperties> bag(new CProperties());
  bag->SetFourProperty("type", GetType());
  bag->SetProperty("length", const_cast<CDataReference*>(this)->GetLength());
  return bag.Detach();
}

bool CDataReference::HasTag(unsigned int type, const unsigned int* tags, int count) {
  for (int i = 0; i < count; ++i) {
    if (tags[i] == type) return true;
  }
  return false;
}

CDataReference* CDataReference::New(unsigned int tag) {
  switch (tag) {
    case FourCC("byte"):
      return new CBufferDataReference(0);
    case FourCC("disk"):
      return new CStorageDataReference(0, 0);
    case FourCC("read"):
      return new CContainerDataReference();
    case FourCC("many"):
      return new CMultipleDataReference();
    case FourCC(".asf"):
    case FourCC(".dcp"):
    case FourCC(".imf"):
    case FourCC(".lxf"):
    case FourCC(".mp4"):
    case FourCC(".mpg"):
    case FourCC(".mxf"):
    case FourCC(".opp"):
      // Until a container format registers its own class, its references
      // keep their tag and their storage position and length.
      return new CContainerDataReference(tag);
    default:
      return nullptr;
  }
}

}  // namespace Corvane::Mox
