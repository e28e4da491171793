#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecompressor.h"

#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecode.h"

namespace Corvane::Mox {

namespace {

const CPcmDecompressor::Row kRows[] = {
    {{static_cast<int>(0x6D730011u), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

}  // namespace

CImaAdpcmDecompressor::CImaAdpcmDecompressor() : CPcmDecompressor(ComponentCode, kRows) {}

CImaAdpcmDecompressor::~CImaAdpcmDecompressor() { Finalize(); }

Result CImaAdpcmDecompressor::Initialize() {
  Finalize();
  format_ = CreateWindowsFormat();
  decoder_ = new CImaAdpcmDecode(format_);
  return Result();
}

Result CImaAdpcmDecompressor::Finalize() {
  if (decoder_) decoder_->Release();
  if (format_) format_->Release();
  decoder_ = nullptr;
  format_ = nullptr;
  return Result();
}

long long CImaAdpcmDecompressor::GetOutputFrames(int length) const {
  if (!decoder_) return 0;
  const int block = format_ ? format_->GetBlockAlignment() : 0;
  return block > 0 ? static_cast<long long>(length / block) * decoder_->GetFramesPerBlock() : 0;
}

Result CImaAdpcmDecompressor::DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) {
  frames = 0;
  if (!decoder_) return ResultNullPointer("the decoder is not initialised");
  int count = 0;
  Result decoded = decoder_->Decode(out, &count, in, length);
  frames = count;
  return decoded;
}

}  // namespace Corvane::Mox
