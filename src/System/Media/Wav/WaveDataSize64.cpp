#include "System/Media/Wav/WaveDataSize64.h"

#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int EntrySize = 12;

}  // namespace

CWaveDataSize64::CWaveDataSize64() : CWaveChunk(TypeCode), riffSize_(0), dataSize_(0), sampleCount_(0) {}

CWaveDataSize64::CWaveDataSize64(long long position, unsigned int size)
    : CWaveChunk(position, TypeCode, size), riffSize_(0), dataSize_(0), sampleCount_(0) {}

void CWaveDataSize64::SetTableSize(unsigned int id, long long size) {
  for (auto& entry : table_) {
    if (entry.first == id) {
      entry.second = size;
      return;
    }
  }
  table_.emplace_back(id, size);
}

long long CWaveDataSize64::GetChunkSize(unsigned int id) const {
  if (id == FourCC("RIFF")) return riffSize_;
  if (id == FourCC("data")) return dataSize_;
  for (const auto& entry : table_) {
    if (entry.first == id) return entry.second;
  }
  return 0;
}

unsigned int CWaveDataSize64::GetSize() const {
  return FixedSize + EntrySize * static_cast<unsigned int>(table_.size());
}

Result CWaveDataSize64::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  if (GetHeaderSize() < FixedSize) return ResultFormatError("'ds64' chunk of %u bytes", GetHeaderSize());
  int length = 0;
  Result result = reader->ReadInt64(&riffSize_);
  if (result.Succeeded()) result = reader->ReadInt64(&dataSize_);
  if (result.Succeeded()) result = reader->ReadInt64(&sampleCount_);
  if (result.Succeeded()) result = reader->ReadInt32(&length);
  if (result.Failed()) return result;
  // The table cannot hold more entries than the chunk has room for.
  const unsigned int room = (GetHeaderSize() - FixedSize) / EntrySize;
  const unsigned int count = static_cast<unsigned int>(length) < room ? static_cast<unsigned int>(length) : room;
  table_.clear();
  for (unsigned int i = 0; i < count; ++i) {
    unsigned int id = 0;
    long long size = 0;
    result = reader->ReadFour(&id);
    if (result.Succeeded()) result = reader->ReadInt64(&size);
    if (result.Failed()) return result;
    table_.emplace_back(id, size);
  }
  return Result();
}

Result CWaveDataSize64::Write(CBinaryWriter* writer) {
  Result result = CWaveChunk::Write(writer);
  if (result.Succeeded()) result = writer->WriteInt64(riffSize_);
  if (result.Succeeded()) result = writer->WriteInt64(dataSize_);
  if (result.Succeeded()) result = writer->WriteInt64(sampleCount_);
  if (result.Succeeded()) result = writer->WriteInt32(static_cast<int>(table_.size()));
  for (const auto& entry : table_) {
    if (result.Succeeded()) result = writer->WriteFour(entry.first);
    if (result.Succeeded()) result = writer->WriteInt64(entry.second);
  }
  return result;
}

}  // namespace Corvane::Mox
