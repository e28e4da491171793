#include "System/Media/Wav/WaveList.h"

#include "System/FourString.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/Wav/AdmChannelAllocation.h"
#include "System/Media/Wav/DolbyAudioMetadata.h"
#include "System/Media/Wav/WaveAxml.h"
#include "System/Media/Wav/WaveBroadcastExtension.h"
#include "System/Media/Wav/WaveData.h"
#include "System/Media/Wav/WaveDataSize64.h"
#include "System/Media/Wav/WaveFact.h"
#include "System/Media/Wav/WaveFormat.h"
#include "System/Media/Wav/WaveIxml.h"
#include "System/Media/Wav/WaveMpegExtension.h"

namespace Corvane::Mox {

CWaveList::CWaveList() : CWaveChunk(RiffId) {}

CWaveList::~CWaveList() {
  for (CWaveChunk* chunk : chunks_) chunk->Release();
}

CWaveChunk* CWaveList::GetChunk(int index) const {
  return index >= 0 && index < GetCount() ? chunks_[static_cast<size_t>(index)] : nullptr;
}

CWaveChunk* CWaveList::FindChunk(unsigned int id) const {
  for (CWaveChunk* chunk : chunks_) {
    if (chunk->GetId() == id) return chunk;
  }
  return nullptr;
}

void CWaveList::Add(CWaveChunk* chunk) {
  if (!chunk) return;
  chunk->Acquire();
  chunks_.push_back(chunk);
}

CWaveChunk* CWaveList::CreateChunk(long long position, unsigned int id, unsigned int size) {
  switch (id) {
    case CWaveFormat::TypeCode: return new CWaveFormat(position, size);
    case CWaveFact::TypeCode: return new CWaveFact(position, size);
    case CWaveDataSize64::TypeCode: return new CWaveDataSize64(position, size);
    case CWaveData::TypeCode: return new CWaveData(position, size);
    case CWaveBroadcastExtension::TypeCode: return new CWaveBroadcastExtension(position, size);
    case CWaveMpegExtension::TypeCode: return new CWaveMpegExtension(position, size);
    case CWaveAxml::TypeCode: return new CWaveAxml(position, size);
    case CWaveIxml::TypeCode: return new CWaveIxml(position, size);
    case CAdmChannelAllocation::TypeCode: return new CAdmChannelAllocation(position, size);
    case CDolbyAudioMetadata::TypeCode: return new CDolbyAudioMetadata(position, size);
    default: return new CWaveChunk(position, id, size);
  }
}

unsigned int CWaveList::GetSize() const {
  unsigned long long total = 4;
  for (const CWaveChunk* chunk : chunks_) {
    const unsigned int size = chunk->GetSize();
    if (size == SizeInDataSize64) return SizeInDataSize64;
    total += 8ull + size + (size & 1);
  }
  return total >= SizeInDataSize64 ? SizeInDataSize64 : static_cast<unsigned int>(total);
}

long long CWaveList::GetPaddedSize(unsigned int id, unsigned int size) const {
  long long payload = size;
  if (size == SizeInDataSize64) {
    const auto* sizes = static_cast<const CWaveDataSize64*>(FindChunk(CWaveDataSize64::TypeCode));
    payload = sizes ? sizes->GetChunkSize(id) : 0;
    // A negative (or absurd) size from a damaged table ends the walk at the
    // end of the stream instead of going backwards.
    if (payload < 0 || payload > (1ll << 62)) payload = 1ll << 62;
  }
  return payload + (payload & 1);
}

Result CWaveList::ReadChunks(CBinaryReader* reader) {
  const long long length = reader->GetLength();
  for (long long position = reader->GetPosition(); position < length - 7;) {
    unsigned int id = 0;
    int size = 0;
    if (reader->Seek(position, SeekOrigin::Begin, nullptr).Failed()) break;
    if (reader->ReadFour(&id).Failed() || reader->ReadInt32(&size).Failed()) break;
    RObject<CWaveChunk> chunk(CreateChunk(position, id, static_cast<unsigned int>(size)));
    if (chunk->Read(reader).Failed()) break;
    Add(chunk.Get());
    position += 8 + GetPaddedSize(id, static_cast<unsigned int>(size));
  }
  return Result();
}

Result CWaveList::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  unsigned int id = 0;
  int size = 0;
  unsigned int form = 0;
  Result result = reader->ReadFour(&id);
  if (result.Failed()) return result;
  if (id != RiffId && id != Rf64Id)
    return ResultError("incorrect chunk ID '%s' (expected 'RIFF' or 'RF64')", FourString(id).GetChars());
  result = reader->ReadInt32(&size);
  if (result.Succeeded()) result = reader->ReadFour(&form);
  if (result.Failed()) return result;
  if (form != WaveId) return ResultError("incorrect format '%s' (expected 'WAVE')", FourString(form).GetChars());
  SetType(id);
  SetHeaderSize(static_cast<unsigned int>(size));
  return ReadChunks(reader);
}

Result CWaveList::Write(CBinaryWriter* writer) {
  Result result = CWaveChunk::Write(writer);
  if (result.Succeeded() && GetHeaderSize() == SizeInDataSize64) {
    // The same header again, as RF64: its real size is in "ds64".
    result = writer->Seek(GetPosition(), SeekOrigin::Begin, nullptr);
    if (result.Succeeded()) result = writer->WriteFour(Rf64Id);
    if (result.Succeeded()) result = writer->WriteInt32(-1);
    if (result.Succeeded()) SetType(Rf64Id);
  }
  if (result.Succeeded()) result = writer->WriteFour(WaveId);
  for (CWaveChunk* chunk : chunks_) {
    if (result.Failed()) break;
    result = chunk->Write(writer);
  }
  return result;
}

}  // namespace Corvane::Mox
