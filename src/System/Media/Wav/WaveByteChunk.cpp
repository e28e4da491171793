#include "System/Media/Wav/WaveByteChunk.h"

#include "System/ByteArray.h"
#include "System/IO/BinaryWriter.h"

namespace Corvane::Mox {

CWaveByteChunk::CWaveByteChunk(unsigned int id) : CWaveChunk(id), bytes_(nullptr) {}

CWaveByteChunk::CWaveByteChunk(long long position, unsigned int id, unsigned int size)
    : CWaveChunk(position, id, size), bytes_(nullptr) {}

CWaveByteChunk::~CWaveByteChunk() {
  if (bytes_) bytes_->Release();
}

CByteArray* CWaveByteChunk::GetDocument() const {
  if (bytes_) bytes_->Acquire();
  return bytes_;
}

void CWaveByteChunk::SetDocument(CByteArray* bytes) {
  if (bytes) bytes->Acquire();
  if (bytes_) bytes_->Release();
  bytes_ = bytes;
}

unsigned int CWaveByteChunk::GetSize() const { return bytes_ ? static_cast<unsigned int>(bytes_->GetLength()) : 0; }

Result CWaveByteChunk::Read(CBinaryReader* reader) {
  RObject<CByteArray> bytes;
  Result result = ReadPayload(reader, bytes.Out());
  if (result.Failed()) return result;
  SetDocument(bytes.Get());
  return Result();
}

Result CWaveByteChunk::Write(CBinaryWriter* writer) {
  Result result = CWaveChunk::Write(writer);
  if (result.Succeeded() && bytes_) result = writer->WriteBytes(bytes_);
  if (result.Succeeded() && (GetSize() & 1)) result = writer->WriteByte(0);
  return result;
}

}  // namespace Corvane::Mox
