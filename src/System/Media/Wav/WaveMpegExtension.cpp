#include "System/Media/Wav/WaveMpegExtension.h"

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"

namespace Corvane::Mox {

CWaveMpegExtension::CWaveMpegExtension() : CWaveChunk(TypeCode), fields_{} {}

CWaveMpegExtension::CWaveMpegExtension(long long position, unsigned int size)
    : CWaveChunk(position, TypeCode, size), fields_{} {}

Result CWaveMpegExtension::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  if (GetHeaderSize() < PayloadSize) return ResultFormatError("'mext' chunk of %u bytes", GetHeaderSize());
  for (unsigned short& field : fields_) {
    short value = 0;
    Result result = reader->ReadInt16(&value);
    if (result.Failed()) return result;
    field = static_cast<unsigned short>(value);
  }
  return Result();
}

Result CWaveMpegExtension::Write(CBinaryWriter* writer) {
  Result result = CWaveChunk::Write(writer);
  for (unsigned short field : fields_) {
    if (result.Succeeded()) result = writer->WriteInt16(static_cast<short>(field));
  }
  if (result.Succeeded()) result = writer->WriteInt32(0);
  return result;
}

}  // namespace Corvane::Mox
