#include "System/Media/Filter/AudioDecompressors/G726Decode.h"

#include "System/ByteArray.h"
#include "System/IO/BitStream.h"
#include "System/Media/Audio/G711.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/G726State.h"

namespace Corvane::Mox {

CG726Decode::CG726Decode(CWindowsAudioFormat* format)
    : CObject(TypeCode), format_(format), reset_(true), state_(std::make_unique<G726State>()) {
  if (format_) format_->Acquire();
}

CG726Decode::~CG726Decode() {
  if (format_) format_->Release();
}

Result CG726Decode::Decode(unsigned char* out, unsigned int* count, unsigned char* in, int length, int bitsPerCode) {
  if (!count || (!out && length > 0)) return ResultArgumentNull();
  *count = 0;
  if (bitsPerCode == 0 || length <= 0) return Result();
  if (bitsPerCode < 2 || bitsPerCode > 5) return ResultError("G.726 codes of %d bits do not exist", bitsPerCode);
  const unsigned int codes = static_cast<unsigned int>(length) * 8u / static_cast<unsigned int>(bitsPerCode);
  RObject<CByteArray> bytes(new CByteArray(length, in, nullptr));  // a view: the bits are read in place
  RObject<CBitStream> bits(new CBitStream(bytes));
  if (reset_) state_->Reset();
  reset_ = false;
  short* samples = reinterpret_cast<short*>(out);
  for (unsigned int i = 0; i < codes; ++i) {
    unsigned int code = 0;
    Result read = bits->Read(bitsPerCode, code);
    if (read.Failed()) return read;
    samples[i] = G711::AlawExpand(state_->DecodeToAlaw(static_cast<int>(code), bitsPerCode));
  }
  *count = codes;
  return Result();
}

}  // namespace Corvane::Mox
