#pragma once
// CWaveByteChunk: a chunk whose payload is kept whole as one byte array (the
// XML documents "axml" and "iXML", "chna", "dbmd"). An odd payload is
// written with its pad byte.

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CWaveByteChunk : public CWaveChunk {
 public:
  explicit CWaveByteChunk(unsigned int id);
  CWaveByteChunk(long long position, unsigned int id, unsigned int size);
  ~CWaveByteChunk() override;

  // The payload, acquired (null before Read or SetDocument).
  CByteArray* GetDocument() const;
  // Acquires bytes (may be null).
  void SetDocument(CByteArray* bytes);

  unsigned int GetSize() const override;
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) override;

 private:
  CByteArray* bytes_;
};

}  // namespace Corvane::Mox
