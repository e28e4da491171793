#include "System/Media/Filter/AudioDecompressors/G726Decompressor.h"

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/G726Decode.h"

namespace Corvane::Mox {

namespace {

const CPcmDecompressor::Row kRows[] = {
    {{static_cast<int>(0x6D730045u), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{static_cast<int>(FourCC("g726")), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

}  // namespace

CG726Decompressor::CG726Decompressor() : CPcmDecompressor(ComponentCode, kRows) {}

CG726Decompressor::~CG726Decompressor() { Finalize(); }

Result CG726Decompressor::Initialize() {
  Finalize();
  format_ = CreateWindowsFormat();
  if (!format_) return ResultNullPointer("input properties not set");
  bitsPerCode_ = format_->GetBitsPerSample();
  const CAudioProperties* input = GetInputProperties();
  if ((bitsPerCode_ < 2 || bitsPerCode_ > 5) && input && input->GetSampleRate() > 0)
    bitsPerCode_ = static_cast<int>((input->GetBitRate() + input->GetSampleRate() / 2) / input->GetSampleRate());
  if (bitsPerCode_ < 2 || bitsPerCode_ > 5) return ResultError("G.726 codes of %d bits do not exist", bitsPerCode_);
  decoder_ = new CG726Decode(format_);
  return Result();
}

Result CG726Decompressor::Finalize() {
  if (decoder_) decoder_->Release();
  if (format_) format_->Release();
  decoder_ = nullptr;
  format_ = nullptr;
  return Result();
}

void CG726Decompressor::Flush() {
  CPcmDecompressor::Flush();
  if (decoder_) decoder_->Reset();
}

long long CG726Decompressor::GetOutputFrames(int length) const {
  return bitsPerCode_ > 0 ? static_cast<long long>(length) * 8 / bitsPerCode_ : 0;
}

Result CG726Decompressor::DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) {
  frames = 0;
  if (!decoder_) return ResultNullPointer("the decoder is not initialised");
  unsigned int count = 0;
  Result decoded = decoder_->Decode(out, &count, in, length, bitsPerCode_);
  frames = count;
  return decoded;
}

}  // namespace Corvane::Mox
