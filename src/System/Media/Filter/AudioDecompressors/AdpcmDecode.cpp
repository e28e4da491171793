#include "System/Media/Filter/AudioDecompressors/AdpcmDecode.h"

#include <algorithm>
#include <vector>

#include "System/Media/Audio/AdpcmExtension.h"
#include "System/Media/Audio/WindowsAudioFormat.h"

namespace Corvane::Mox {

namespace {

const int kAdaptation[16] = {230, 230, 230, 230, 307, 409, 512, 614, 768, 614, 512, 409, 307, 230, 230, 230};

int ReadLe16(const unsigned char* p) { return static_cast<short>(p[0] | (p[1] << 8)); }

}  // namespace

CAdpcmDecode::CAdpcmDecode(CWindowsAudioFormat* format) : CObject(TypeCode), format_(format), extension_(nullptr) {
  if (!format_) return;
  format_->Acquire();
  CObject* extension = format_->GetExtension();
  if (extension && extension->GetType() == CAdpcmExtension::TypeCode) extension_ = static_cast<CAdpcmExtension*>(extension);
  else if (extension) extension->Release();
}

CAdpcmDecode::~CAdpcmDecode() {
  if (extension_) extension_->Release();
  if (format_) format_->Release();
}

int CAdpcmDecode::GetFramesPerBlock() const {
  if (!format_) return 0;
  if (extension_ && extension_->GetSamplesPerBlock() > 0) return extension_->GetSamplesPerBlock();
  // Without the extension: two header frames and two codes per byte per channel.
  const int channels = std::max(1, format_->GetChannels());
  return (format_->GetBlockAlignment() - 7 * channels) * 2 / channels + 2;
}

short CAdpcmDecode::Expand(Channel& channel, int nibble) {
  const int code = nibble >= 8 ? nibble - 16 : nibble;
  const int prediction = (channel.sample1 * channel.c1 + channel.sample2 * channel.c2) / 256;
  const int value = std::clamp(prediction + code * channel.step, -32768, 32767);
  channel.step = std::max(16, (kAdaptation[nibble] * channel.step) / 256);
  channel.sample2 = channel.sample1;
  channel.sample1 = value;
  return static_cast<short>(value);
}

Result CAdpcmDecode::DecodeBlock(const unsigned char* block, short* out) {
  const int channels = format_->GetChannels();
  const int frames = GetFramesPerBlock();
  const int blockBytes = format_->GetBlockAlignment();
  if (blockBytes < 7 * channels) return ResultError("the ADPCM block is shorter than its header");
  std::vector<Channel> state(static_cast<size_t>(channels));
  const int predictors = extension_ ? extension_->GetPredictorCount() : 0;
  const unsigned char* p = block;
  for (Channel& channel : state) {
    const int index = *p++;
    if (index >= predictors) return ResultError("ADPCM predictor index %d is out of range", index);
    channel.c1 = extension_->GetCoefficient1(index);
    channel.c2 = extension_->GetCoefficient2(index);
  }
  for (Channel& channel : state) channel.step = ReadLe16(p), p += 2;
  for (Channel& channel : state) channel.sample1 = ReadLe16(p), p += 2;
  for (Channel& channel : state) channel.sample2 = ReadLe16(p), p += 2;

  const size_t total = static_cast<size_t>(frames) * channels;
  std::fill(out, out + total, short{0});
  // The older sample comes out first.
  for (int c = 0; c < channels && frames > 0; ++c) out[c] = static_cast<short>(state[c].sample2);
  for (int c = 0; c < channels && frames > 1; ++c) out[channels + c] = static_cast<short>(state[c].sample1);
  if (channels > 2) return Result();

  const unsigned char* end = block + blockBytes;
  size_t position = static_cast<size_t>(2 * channels);
  while (position < total) {
    if (p >= end) return ResultError("the ADPCM block ends before its frames");
    const int byte = *p++;
    out[position] = Expand(state[0], byte >> 4);
    if (++position >= total) break;
    out[position] = Expand(state[channels - 1], byte & 0x0F);
    ++position;
  }
  return Result();
}

Result CAdpcmDecode::Decode(unsigned char* out, int* count, unsigned char* in, int length) {
  if (!format_) return ResultError("the ADPCM decoder has no format");
  if (!count || (!out && length > 0)) return ResultArgumentNull();
  const int blockBytes = format_->GetBlockAlignment();
  const int channels = format_->GetChannels();
  const int frames = GetFramesPerBlock();
  if (blockBytes <= 0 || channels <= 0 || frames <= 0) return ResultError("the ADPCM format has no block layout");
  const int blocks = length / blockBytes;
  *count = blocks * frames;
  short* samples = reinterpret_cast<short*>(out);
  for (int b = 0; b < blocks; ++b) {
    Result decoded = DecodeBlock(in + static_cast<size_t>(b) * blockBytes, samples + static_cast<size_t>(b) * frames * channels);
    if (decoded.Failed()) return decoded;
  }
  return Result();
}

}  // namespace Corvane::Mox
