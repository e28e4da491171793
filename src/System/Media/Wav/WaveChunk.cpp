#include "System/Media/Wav/WaveChunk.h"

#include "System/ByteArray.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"

namespace Corvane::Mox {

CWaveChunk::CWaveChunk(unsigned int id) : CObject(id), position_(0), size_(0) {}

CWaveChunk::CWaveChunk(long long position, unsigned int id, unsigned int size)
    : CObject(id), position_(position), size_(size) {}

Result CWaveChunk::Read(CBinaryReader*) { return Result(); }

Result CWaveChunk::Write(CBinaryWriter* writer) {
  if (!writer) return ResultArgumentNull();
  position_ = writer->GetPosition();
  const unsigned int size = GetSize();
  Result result = writer->WriteFour(GetId());
  if (result.Succeeded()) result = writer->WriteInt32(static_cast<int>(size));
  if (result.Succeeded()) size_ = size;
  return result;
}

Result CWaveChunk::ReadPayload(CBinaryReader* reader, CByteArray*& bytes) const {
  bytes = nullptr;
  if (!reader) return ResultArgumentNull();
  if (size_ > static_cast<unsigned int>(MaximumPayload)) return ResultFormatError("chunk of %u bytes", size_);
  RObject<CByteArray> payload(new CByteArray(nullptr, static_cast<int>(size_)));
  if (size_ > 0) {
    Result result = reader->ReadBytes(payload->GetData(), static_cast<int>(size_));
    if (result.Failed()) return result;
  }
  bytes = payload.Detach();
  return Result();
}

}  // namespace Corvane::Mox
