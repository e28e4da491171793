#pragma once
// CAdmChannelAllocation ("chna"): the ADM channel allocation that pairs tracks with the "axml" document, kept as the chunk's bytes.

#include "System/Media/Wav/WaveByteChunk.h"

namespace Corvane::Mox {

class CAdmChannelAllocation : public CWaveByteChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("chna");

  CAdmChannelAllocation() : CWaveByteChunk(TypeCode) {}
  CAdmChannelAllocation(long long position, unsigned int size) : CWaveByteChunk(position, TypeCode, size) {}
};

}  // namespace Corvane::Mox
