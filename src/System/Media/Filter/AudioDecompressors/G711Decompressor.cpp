#include "System/Media/Filter/AudioDecompressors/G711Decompressor.h"

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/G711Decode.h"

namespace Corvane::Mox {

namespace {

const CPcmDecompressor::Row kRows[] = {
    {{static_cast<int>(0x6D730006u), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{static_cast<int>(0x6D730007u), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{static_cast<int>(FourCC("g711")), 0, 0, 0}, {static_cast<int>(FourCC("sowt")), 0, 0, 0}},
    {{0, 0, 0, 0}, {0, 0, 0, 0}},
};

}  // namespace

CG711Decompressor::CG711Decompressor() : CPcmDecompressor(ComponentCode, kRows) {}

CG711Decompressor::~CG711Decompressor() { Finalize(); }

Result CG711Decompressor::Initialize() {
  Finalize();
  format_ = CreateWindowsFormat();
  if (!format_) return ResultNullPointer("input properties not set");
  if (GetInputFormat() == FourCC("g711")) format_->SetFormatTag(CWindowsAudioFormat::FormatMulaw);
  // One byte per sample: a frame is as many bytes as channels.
  format_->SetBlockAlignment(GetInputChannels() > 0 ? GetInputChannels() : 1);
  decoder_ = new CG711Decode(format_);
  return Result();
}

Result CG711Decompressor::Finalize() {
  if (decoder_) decoder_->Release();
  if (format_) format_->Release();
  decoder_ = nullptr;
  format_ = nullptr;
  return Result();
}

void CG711Decompressor::Flush() { CPcmDecompressor::Flush(); }

long long CG711Decompressor::GetOutputFrames(int length) const {
  const int channels = GetInputChannels();
  return channels > 0 ? length / channels : 0;
}

Result CG711Decompressor::DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) {
  frames = 0;
  if (!decoder_) return ResultNullPointer("the decoder is not initialised");
  const int channels = GetInputChannels() > 0 ? GetInputChannels() : 1;
  int count = 0;
  Result decoded = decoder_->Decode(out, &count, in, length - length % channels);
  frames = count;
  return decoded;
}

}  // namespace Corvane::Mox
