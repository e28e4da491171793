#pragma once
// CWaveFact ("fact"): the number of sample frames of a coded stream.

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CWaveFact : public CWaveChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("fact");

  explicit CWaveFact(unsigned int samples) : CWaveChunk(TypeCode), samples_(samples) {}
  CWaveFact(long long position, unsigned int size) : CWaveChunk(position, TypeCode, size), samples_(0) {}

  unsigned int GetSamples() const { return samples_; }
  void SetSamples(unsigned int samples) { samples_ = samples; }

  unsigned int GetSize() const override { return 4; }
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) override;

 private:
  unsigned int samples_;
};

}  // namespace Corvane::Mox
