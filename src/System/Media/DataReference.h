#pragma once
// CDataReference: where a sample's payload bytes are (in memory, in storage,
// inside a container, in a picture buffer), guarded by a read/write lock
// whose holds any thread may release (a locked sample changes threads).
// Data references are pool objects identified by four-character tags; a class
// answers IsType for every tag of its family row (a buffer reference is
// "byte", "1d[]" and "dram" at once).

#include "System/Media/PropertiesDescription.h"
#include "System/PoolObject.h"
#include "System/Threading/SharedExclusiveLock.h"

namespace Corvane::Mox {

class CBinaryReader;
class CBinaryWriter;
class CMediaProperties;

class CDataReference : public CPoolObject, public IPropertiesDescription {
 public:
  // Lock modes: shared for readers, exclusive (bit 1) for writers.
  enum LockMode : int { LockShared = 0, LockExclusive = 2 };

  explicit CDataReference(unsigned int type);
  ~CDataReference() override;

  virtual Result Lock(int mode);
  virtual Result Unlock();
  virtual int GetLength() = 0;
  // Not supported unless a subclass says otherwise.
  virtual Result SetLength(int length);
  virtual unsigned char* GetData() = 0;
  // What the payload will occupy once resolved: GetLength() by default.
  virtual int GetEstimatedLength(CMediaProperties* properties);
  // Bytes of the reference's own binary form (after its tag and size).
  virtual int GetSize() const;
  virtual Result Read(CBinaryReader* reader);
  virtual Result Write(CBinaryWriter* writer) const;
  CProperties* GetDescriptiveRepresentation() const override;

  // The reference a serialised tag names: "byte" a buffer, "disk" a storage,
  // "read" a container, "many" a multiple reference, and the container tags
  // (".asf", ".dcp", ".imf", ".lxf", ".mp4", ".mpg", ".mxf", ".opp") a
  // container reference of that tag; null for any other tag.
  static CDataReference* New(unsigned int tag);

 protected:
  // True when type is one of the count tags.
  static bool HasTag(unsigned int type, const unsigned int* tags, int count);

 private:
  CSharedExclusiveLock lock_;
};

}  // namespace Corvane::Mox
