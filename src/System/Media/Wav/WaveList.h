#pragma once
// CWaveList ("RIFF" or "RF64"): the file's outer chunk, form type "WAVE",
// and the chunks inside it in file order.

#include <vector>

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CWaveList : public CWaveChunk {
 public:
  static constexpr unsigned int RiffId = FourCC("RIFF");
  static constexpr unsigned int Rf64Id = FourCC("RF64");
  static constexpr unsigned int WaveId = FourCC("WAVE");

  CWaveList();
  ~CWaveList() override;

  int GetCount() const { return static_cast<int>(chunks_.size()); }
  // Borrowed; null outside the list.
  CWaveChunk* GetChunk(int index) const;
  // The first chunk with the ID, borrowed; null when none.
  CWaveChunk* FindChunk(unsigned int id) const;
  // Appends (acquires) a chunk.
  void Add(CWaveChunk* chunk);

  // 4 plus every chunk's padded size and header; 0xFFFFFFFF when a chunk's
  // size or the total does not fit 32 bits.
  unsigned int GetSize() const override;
  // Reads the list header and every chunk up to the end of the stream. A
  // chunk that cannot be read ends the list with what was read so far.
  Result Read(CBinaryReader* reader) override;
  // Writes the header ("RF64" when the size does not fit), "WAVE" and every
  // chunk in order.
  Result Write(CBinaryWriter* writer) override;

  // The chunk object for an ID (a plain chunk for IDs without a class).
  static CWaveChunk* CreateChunk(long long position, unsigned int id, unsigned int size);

 private:
  // The payload size of a chunk header, rounded up to even; sizes kept in
  // "ds64" come from the chunk read so far.
  long long GetPaddedSize(unsigned int id, unsigned int size) const;
  Result ReadChunks(CBinaryReader* reader);

  std::vector<CWaveChunk*> chunks_;
};

}  // namespace Corvane::Mox
