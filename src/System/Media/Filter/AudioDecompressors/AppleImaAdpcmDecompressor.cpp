#include "System/Media/Filter/AudioDecompressors/AppleImaAdpcmDecompressor.h"

#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/AppleImaAdpcmDecode.h"

namespace Corvane::Mox {

namespace {

const CPcmDecompressor::Row kRows[] = {
    {{static_cast<int>(FourCC("ima4")), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

}  // namespace

CAppleImaAdpcmDecompressor::CAppleImaAdpcmDecompressor() : CPcmDecompressor(ComponentCode, kRows) {}

CAppleImaAdpcmDecompressor::~CAppleImaAdpcmDecompressor() { Finalize(); }

Result CAppleImaAdpcmDecompressor::Initialize() {
  Finalize();
  decoder_ = new CAppleImaAdpcmDecode(GetInputChannels());
  return Result();
}

Result CAppleImaAdpcmDecompressor::Finalize() {
  if (decoder_) decoder_->Release();
  if (format_) format_->Release();
  decoder_ = nullptr;
  format_ = nullptr;
  return Result();
}

long long CAppleImaAdpcmDecompressor::GetOutputFrames(int length) const {
  if (!decoder_) return 0;
  const int channels = GetInputChannels();
  return channels > 0 ? static_cast<long long>(length / CAppleImaAdpcmDecode::PacketBytes / channels) * CAppleImaAdpcmDecode::FramesPerPacket : 0;
}

Result CAppleImaAdpcmDecompressor::DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) {
  frames = 0;
  if (!decoder_) return ResultNullPointer("the decoder is not initialised");
  int count = 0;
  Result decoded = decoder_->Decode(out, &count, in, length);
  frames = count;
  return decoded;
}

}  // namespace Corvane::Mox
