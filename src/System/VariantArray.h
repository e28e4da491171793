#pragma once
// CVariantArray: a fixed-length array of variants, the value of array
// properties. Null slots are allowed and print as "<null>".

#include "System/Collections/Array.h"
#include "System/Variant.h"

namespace Corvane::Mox {

class CByteArray;

class CVariantArray : public CArray<CVariant> {
 public:
  explicit CVariantArray(int count);

  // "[ " followed by the elements' texts joined with ", " and " ]".
  CString* ToString() const override;
  // One byte per element (its ToUInt8; 0 for null slots), in a new array.
  CByteArray* ToBytes() const;
};

}  // namespace Corvane::Mox
