#include "System/Media/Filter/AudioDecompressors/G711Decode.h"

#include "System/Media/Audio/G711.h"
#include "System/Media/Audio/WindowsAudioFormat.h"

namespace Corvane::Mox {

CG711Decode::CG711Decode(CWindowsAudioFormat* format) : CObject(TypeCode), format_(format) {
  if (format_) format_->Acquire();
}

CG711Decode::~CG711Decode() {
  if (format_) format_->Release();
}

Result CG711Decode::Decode(unsigned char* out, int* count, unsigned char* in, int length) {
  if (!format_) return ResultError("the G.711 decoder has no format");
  if (!count || (!out && length > 0)) return ResultArgumentNull();
  const int tag = format_->GetFormat();
  if (tag != CWindowsAudioFormat::FormatAlaw && tag != CWindowsAudioFormat::FormatMulaw)
    return ResultError("format tag %d is not G.711", tag);
  const int16_t* table = tag == CWindowsAudioFormat::FormatAlaw ? G711::AlawExpansionTable() : G711::UlawExpansionTable();
  short* samples = reinterpret_cast<short*>(out);
  for (int i = 0; i < length; ++i) samples[i] = table[in[i]];
  const int alignment = format_->GetBlockAlignment();
  *count = alignment > 0 ? length / alignment : 0;
  return Result();
}

}  // namespace Corvane::Mox
