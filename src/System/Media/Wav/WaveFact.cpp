#include "System/Media/Wav/WaveFact.h"

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"

namespace Corvane::Mox {

Result CWaveFact::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  if (GetHeaderSize() < 4) return ResultFormatError("'fact' chunk of %u bytes", GetHeaderSize());
  int samples = 0;
  Result result = reader->ReadInt32(&samples);
  if (result.Succeeded()) samples_ = static_cast<unsigned int>(samples);
  return result;
}

Result CWaveFact::Write(CBinaryWriter* writer) {
  Result result = CWaveChunk::Write(writer);
  return result.Succeeded() ? writer->WriteInt32(static_cast<int>(samples_)) : result;
}

}  // namespace Corvane::Mox
