#pragma once
// CWaveIxml ("iXML"): the iXML production metadata document, kept as the chunk's bytes.

#include "System/Media/Wav/WaveByteChunk.h"

namespace Corvane::Mox {

class CWaveIxml : public CWaveByteChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("iXML");

  CWaveIxml() : CWaveByteChunk(TypeCode) {}
  CWaveIxml(long long position, unsigned int size) : CWaveByteChunk(position, TypeCode, size) {}
};

}  // namespace Corvane::Mox
