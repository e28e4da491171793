#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecode.h"

#include <algorithm>

#include "System/Media/Audio/ImaAdpcmExtension.h"
#include "System/Media/Audio/WindowsAudioFormat.h"
#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecodeChannel.h"

namespace Corvane::Mox {

CImaAdpcmDecode::CImaAdpcmDecode(CWindowsAudioFormat* format)
    : CObject(TypeCode), format_(format), framesPerBlock_(0) {
  if (!format_) return;
  format_->Acquire();
  const int channels = std::max(0, format_->GetChannels());
  RObject<CObject> extension(format_->GetExtension());
  if (extension && extension->GetType() == CImaAdpcmExtension::TypeCode)
    framesPerBlock_ = static_cast<CImaAdpcmExtension*>(extension.Get())->GetSamplesPerBlock();
  if (framesPerBlock_ <= 0 && channels > 0)  // one header frame and eight frames per 4 bytes per channel
    framesPerBlock_ = (format_->GetBlockAlignment() - 4 * channels) * 2 / channels + 1;
  for (int c = 0; c < channels; ++c) channels_.push_back(new CImaAdpcmDecodeChannel(channels));
}

CImaAdpcmDecode::~CImaAdpcmDecode() {
  for (CImaAdpcmDecodeChannel* channel : channels_) channel->Release();
  if (format_) format_->Release();
}

int CImaAdpcmDecode::GetFramesPerBlock() const { return framesPerBlock_; }

Result CImaAdpcmDecode::DecodeBlock(const unsigned char* block, short* out) {
  const int channels = static_cast<int>(channels_.size());
  const int groups = (framesPerBlock_ - 1) / 8;
  const int blockBytes = format_->GetBlockAlignment();
  if (blockBytes < channels * (4 + 4 * groups)) return ResultError("the IMA ADPCM block is shorter than its frames");
  const unsigned char* p = block;
  for (int c = 0; c < channels; ++c, p += 4) {
    const int sample = static_cast<short>(p[0] | (p[1] << 8));
    const int index = p[2] | (p[3] << 8);  // the whole word, limited to the table
    channels_[c]->Start(sample, index, out + c);
  }
  for (int g = 0; g < groups; ++g) {
    for (int c = 0; c < channels; ++c) {
      for (int b = 0; b < 4; ++b, ++p) {
        channels_[c]->Put(*p & 0x0F);
        channels_[c]->Put(*p >> 4);
      }
    }
  }
  // Frames the groups do not reach (a block size that is not 1 + 8n) stay silent.
  const int written = 1 + 8 * groups;
  std::fill(out + static_cast<size_t>(written) * channels, out + static_cast<size_t>(framesPerBlock_) * channels, short{0});
  return Result();
}

Result CImaAdpcmDecode::Decode(unsigned char* out, int* count, unsigned char* in, int length) {
  if (!format_) return ResultError("the IMA ADPCM decoder has no format");
  if (!count || (!out && length > 0)) return ResultArgumentNull();
  const int blockBytes = format_->GetBlockAlignment();
  const int channels = static_cast<int>(channels_.size());
  if (blockBytes <= 0 || channels <= 0 || framesPerBlock_ <= 0) return ResultError("the IMA ADPCM format has no block layout");
  const int blocks = length / blockBytes;
  *count = blocks * framesPerBlock_;
  short* samples = reinterpret_cast<short*>(out);
  for (int b = 0; b < blocks; ++b) {
    Result decoded = DecodeBlock(in + static_cast<size_t>(b) * blockBytes,
                                 samples + static_cast<size_t>(b) * framesPerBlock_ * channels);
    if (decoded.Failed()) return decoded;
  }
  return Result();
}

}  // namespace Corvane::Mox
