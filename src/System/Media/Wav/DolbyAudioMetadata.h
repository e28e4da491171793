#pragma once
// CDolbyAudioMetadata ("dbmd"): Dolby audio metadata, carried along unread, kept as the chunk's bytes.

#include "System/Media/Wav/WaveByteChunk.h"

namespace Corvane::Mox {

class CDolbyAudioMetadata : public CWaveByteChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("dbmd");

  CDolbyAudioMetadata() : CWaveByteChunk(TypeCode) {}
  CDolbyAudioMetadata(long long position, unsigned int size) : CWaveByteChunk(position, TypeCode, size) {}
};

}  // namespace Corvane::Mox
