#include "System/Media/Wav/WaveFormat.h"

#include "System/IO/BinaryWriter.h"
#include "System/Media/Audio/WindowsAudioFormat.h"

namespace Corvane::Mox {

CWaveFormat::CWaveFormat(CWindowsAudioFormat* format) : CWaveChunk(TypeCode), format_(format) {
  if (format_) format_->Acquire();
}

CWaveFormat::CWaveFormat(long long position, unsigned int size)
    : CWaveChunk(position, TypeCode, size), format_(nullptr) {}

CWaveFormat::~CWaveFormat() {
  if (format_) format_->Release();
}

CWindowsAudioFormat* CWaveFormat::GetWindowsAudioFormat() const {
  if (format_) format_->Acquire();
  return format_;
}

unsigned int CWaveFormat::GetSize() const { return format_ ? static_cast<unsigned int>(format_->GetSize()) : 0; }

Result CWaveFormat::Read(CBinaryReader* reader) {
  // A structure larger than any known layout is damage, not a format.
  if (GetHeaderSize() > 0x10000) return ResultFormatError("'fmt ' chunk of %u bytes", GetHeaderSize());
  RObject<CWindowsAudioFormat> format(new CWindowsAudioFormat());
  Result result = format->Read(reader, static_cast<int>(GetHeaderSize()));
  if (result.Failed()) return result;
  if (format_) format_->Release();
  format_ = format.Detach();
  return Result();
}

Result CWaveFormat::Write(CBinaryWriter* writer) {
  if (!format_) return ResultInvalidOperation("no format to write");
  Result result = CWaveChunk::Write(writer);
  if (result.Succeeded()) result = format_->Write(writer);
  if (result.Succeeded() && (GetSize() & 1)) result = writer->WriteByte(0);
  return result;
}

}  // namespace Corvane::Mox
