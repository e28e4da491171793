#pragma once
// CMetadataElement and CMetadata: the metadata that travels with a sample.
// An element is one typed record with its own binary form and an optional
// raw payload; the container keeps elements in insertion order and has a
// binary form of its own, through which independent copies are made.
//
// Only the container and the element base live here; the element kinds are
// registered with New as their carriers are implemented.

#include "System/Collections/List.h"
#include "System/Object.h"

namespace Corvane::Mox {

class CBinaryReader;
class CBinaryWriter;
class CByteArray;
class CDataReference;

class CMetadataElement : public CObject {
 public:
  explicit CMetadataElement(unsigned int type);
  ~CMetadataElement() override;

  virtual bool IsDisplayOrder() const { return false; }
  virtual Result SetDisplayOrder(bool) { return ResultNotImplemented(); }
  // Byte length of the element's own binary form.
  virtual int GetLength() const = 0;
  virtual Result Read(CBinaryReader* reader, int length);
  virtual Result Write(CBinaryWriter* writer) const;

  // The raw payload, acquired; may be null.
  CDataReference* GetDataReference() const;
  void SetDataReference(CDataReference* reference);

  // A new element of the class registered for type; null when none is.
  static CMetadataElement* New(unsigned int type);

 private:
  CDataReference* dataReference_;
};

class CMetadata : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("meta");

  CMetadata();
  ~CMetadata() override;

  int GetDuration() const { return duration_; }
  void SetDuration(int duration) { duration_ = duration; }
  int GetCount() const;
  // The first element answering IsType(type), acquired, or null.
  CMetadataElement* GetElement(unsigned int type) const;
  bool ContainsElement(unsigned int type) const;
  // The element at index in the order they were added, acquired; null outside.
  CMetadataElement* GetElementAt(int index) const;
  // ResultFalse (and nothing added) when an element of its type is present.
  Result AddElement(CMetadataElement* element);
  bool RemoveElement(unsigned int type);

  // 4 for the terminator plus, per element, 16 + its length, or 20 + its
  // length + the payload's size when it has a payload.
  int GetLength() const;
  Result Write(CBinaryWriter* writer) const;
  Result Read(CBinaryReader* reader);
  // A deep copy of source made through the binary form.
  Result Copy(const CMetadata* source);

 private:
  int duration_;
  CList<CMetadataElement>* elements_;
};

}  // namespace Corvane::Mox
