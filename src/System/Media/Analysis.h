#pragma once
// CAnalysis: results that analyzers attach to a sample. They travel with the
// sample as an opaque block of bytes, which is also their binary form.

#include "System/Object.h"

namespace Corvane::Mox {

class CBinaryReader;
class CBinaryWriter;
class CByteArray;

class CAnalysis : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("anal");

  CAnalysis();
  // Acquires bytes (may be null: an empty analysis).
  explicit CAnalysis(CByteArray* bytes);
  ~CAnalysis() override;

  // The bytes, acquired; null when empty.
  CByteArray* GetBytes() const;
  int GetLength() const;
  Result Write(CBinaryWriter* writer) const;
  // Replaces the bytes with length bytes from the reader.
  Result Read(CBinaryReader* reader, int length);

 private:
  CByteArray* bytes_;
};

}  // namespace Corvane::Mox
