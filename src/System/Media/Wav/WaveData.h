#pragma once
// CWaveData ("data"): the essence. Only the header is read or written; the
// essence stays in the file and is written by whoever produces it.

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CWaveData : public CWaveChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("data");

  CWaveData() : CWaveChunk(TypeCode) {}
  CWaveData(long long position, unsigned int size) : CWaveChunk(position, TypeCode, size) {}

  // The first essence byte, 8 bytes after the header.
  long long GetEssencePosition() const { return GetPosition() + 8; }
};

}  // namespace Corvane::Mox
