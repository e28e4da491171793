#pragma once
// CWaveFormat ("fmt "): the chunk holding the stream's WAVEFORMAT structure.

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CWindowsAudioFormat;

class CWaveFormat : public CWaveChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("fmt ");

  // Acquires format (may be null: Read fills one).
  explicit CWaveFormat(CWindowsAudioFormat* format);
  CWaveFormat(long long position, unsigned int size);
  ~CWaveFormat() override;

  // The structure, acquired; null before Read.
  CWindowsAudioFormat* GetWindowsAudioFormat() const;

  unsigned int GetSize() const override;
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) override;

 private:
  CWindowsAudioFormat* format_;
};

}  // namespace Corvane::Mox
