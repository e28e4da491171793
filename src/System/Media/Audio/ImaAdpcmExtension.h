#pragma once
// CImaAdpcmExtension: the extra bytes of an IMA ADPCM format (tag 0x11): the
// frames per block. Its type code is the format's code, "ms" followed by the
// tag.

#include "System/Object.h"

namespace Corvane::Mox {

class CImaAdpcmExtension : public CObject {
 public:
  static constexpr unsigned int TypeCode = 0x6D730011u;

  // Null when fewer than 2 bytes.
  static CImaAdpcmExtension* Create(const unsigned char* bytes, int count);

  int GetSamplesPerBlock() const { return samplesPerBlock_; }

 private:
  explicit CImaAdpcmExtension(int samplesPerBlock);

  int samplesPerBlock_;
};

}  // namespace Corvane::Mox
