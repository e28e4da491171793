#pragma once
// CWaveChunk: one chunk of a RIFF/WAVE file, identified by its four-character
// ID (the object's type code). The base keeps the header only: where it is
// and the 32-bit size it holds (0xFFFFFFFF when the real size is in "ds64").
// Subclasses read and write their payload; every chunk is little-endian.

#include "System/Object.h"

namespace Corvane::Mox {

class CBinaryReader;
class CBinaryWriter;
class CByteArray;

class CWaveChunk : public CObject {
 public:
  // The size field of a chunk whose size is in the "ds64" chunk.
  static constexpr unsigned int SizeInDataSize64 = 0xFFFFFFFFu;
  // The largest payload a chunk reads into memory; larger ones are damage.
  static constexpr int MaximumPayload = 64 * 1024 * 1024;

  explicit CWaveChunk(unsigned int id);
  CWaveChunk(long long position, unsigned int id, unsigned int size);

  unsigned int GetId() const { return GetType(); }
  // The position of the chunk header in the file.
  long long GetPosition() const { return position_; }
  // The header's size field as read or last written.
  unsigned int GetHeaderSize() const { return size_; }
  void SetHeaderSize(unsigned int size) { size_ = size; }

  // The payload size to write; the base answers the header's size.
  virtual unsigned int GetSize() const { return size_; }
  // Reads the payload from the reader, positioned just after the header.
  // The base reads nothing: the list skips the payload.
  virtual Result Read(CBinaryReader* reader);
  // Records the writer's position as the chunk's, writes the ID and
  // GetSize(), remembering it as the size.
  virtual Result Write(CBinaryWriter* writer);

 protected:
  // The whole payload (GetHeaderSize() bytes) in memory, acquired; fails for
  // a size kept in "ds64" or above MaximumPayload.
  Result ReadPayload(CBinaryReader* reader, CByteArray*& bytes) const;

 private:
  long long position_;
  unsigned int size_;
};

}  // namespace Corvane::Mox
