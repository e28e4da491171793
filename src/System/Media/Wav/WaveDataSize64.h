#pragma once
// CWaveDataSize64 ("ds64"): the 64-bit sizes of an RF64 file, whose 32-bit
// size fields hold 0xFFFFFFFF: the RIFF size, the "data" size, the sample
// count and a table of further chunks' sizes.

#include <utility>
#include <vector>

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CWaveDataSize64 : public CWaveChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("ds64");
  // The payload without table entries.
  static constexpr unsigned int FixedSize = 28;

  CWaveDataSize64();
  CWaveDataSize64(long long position, unsigned int size);

  long long GetRiffSize() const { return riffSize_; }
  long long GetDataSize() const { return dataSize_; }
  long long GetSampleCount() const { return sampleCount_; }
  void SetRiffSize(long long size) { riffSize_ = size; }
  void SetDataSize(long long size) { dataSize_ = size; }
  void SetSampleCount(long long count) { sampleCount_ = count; }
  // Adds or replaces the table entry of a chunk.
  void SetTableSize(unsigned int id, long long size);
  int GetTableLength() const { return static_cast<int>(table_.size()); }
  // "RIFF": the RIFF size; "data": the data size; any other ID its table
  // entry; 0 when absent.
  long long GetChunkSize(unsigned int id) const;

  unsigned int GetSize() const override;
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) override;

 private:
  long long riffSize_;
  long long dataSize_;
  long long sampleCount_;
  std::vector<std::pair<unsigned int, long long>> table_;
};

}  // namespace Corvane::Mox
