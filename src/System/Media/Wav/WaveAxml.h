#pragma once
// CWaveAxml ("axml"): the ADM XML document of the file, kept as the chunk's bytes.

#include "System/Media/Wav/WaveByteChunk.h"

namespace Corvane::Mox {

class CWaveAxml : public CWaveByteChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("axml");

  CWaveAxml() : CWaveByteChunk(TypeCode) {}
  CWaveAxml(long long position, unsigned int size) : CWaveByteChunk(position, TypeCode, size) {}
};

}  // namespace Corvane::Mox
