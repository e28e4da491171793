#pragma once
// CG711Decode: A-law (format tag 6) and µ-law (tag 7) to 16-bit PCM, one
// sample per byte.

#include "System/Object.h"

namespace Corvane::Mox {

class CWindowsAudioFormat;

class CG711Decode : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("G711");

  explicit CG711Decode(CWindowsAudioFormat* format);
  ~CG711Decode() override;

  // count receives the frames: length / block alignment.
  Result Decode(unsigned char* out, int* count, unsigned char* in, int length);

 private:
  CWindowsAudioFormat* format_;
};

}  // namespace Corvane::Mox
