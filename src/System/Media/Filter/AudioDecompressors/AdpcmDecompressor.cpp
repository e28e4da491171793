#include "System/Media/Filter/AudioDecompressors/AdpcmDecompressor.h"

#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/AdpcmDecode.h"

namespace Corvane::Mox {

namespace {

const CPcmDecompressor::Row kRows[] = {
    {{static_cast<int>(0x6D730002u), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

}  // namespace

CAdpcmDecompressor::CAdpcmDecompressor() : CPcmDecompressor(ComponentCode, kRows) {}

CAdpcmDecompressor::~CAdpcmDecompressor() { Finalize(); }

Result CAdpcmDecompressor::Initialize() {
  Finalize();
  format_ = CreateWindowsFormat();
  decoder_ = new CAdpcmDecode(format_);
  return Result();
}

Result CAdpcmDecompressor::Finalize() {
  if (decoder_) decoder_->Release();
  if (format_) format_->Release();
  decoder_ = nullptr;
  format_ = nullptr;
  return Result();
}

long long CAdpcmDecompressor::GetOutputFrames(int length) const {
  if (!decoder_) return 0;
  const int block = format_ ? format_->GetBlockAlignment() : 0;
  return block > 0 ? static_cast<long long>(length / block) * decoder_->GetFramesPerBlock() : 0;
}

Result CAdpcmDecompressor::DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) {
  frames = 0;
  if (!decoder_) return ResultNullPointer("the decoder is not initialised");
  int count = 0;
  Result decoded = decoder_->Decode(out, &count, in, length);
  frames = count;
  return decoded;
}

}  // namespace Corvane::Mox
