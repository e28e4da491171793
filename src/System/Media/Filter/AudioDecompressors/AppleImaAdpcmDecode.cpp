#include "System/Media/Filter/AudioDecompressors/AppleImaAdpcmDecode.h"

#include "System/Media/Filter/AudioDecompressors/ImaAdpcmDecodeChannel.h"

namespace Corvane::Mox {

CAppleImaAdpcmDecode::CAppleImaAdpcmDecode(int channels) : CObject(TypeCode), channels_(channels) {}

void CAppleImaAdpcmDecode::DecodePacket(const unsigned char* packet, short* out) const {
  const int header = (packet[0] << 8) | packet[1];
  int predictor = static_cast<short>(header & 0xFF80);
  int index = header & 0x7F;
  if (index > CImaAdpcmDecodeChannel::MaximumIndex) index = CImaAdpcmDecodeChannel::MaximumIndex;
  for (int i = 0; i < 32; ++i) {
    const int byte = packet[2 + i];
    out[(2 * i) * channels_] = static_cast<short>(CImaAdpcmDecodeChannel::Expand(byte & 0x0F, predictor, index));
    out[(2 * i + 1) * channels_] = static_cast<short>(CImaAdpcmDecodeChannel::Expand(byte >> 4, predictor, index));
  }
}

Result CAppleImaAdpcmDecode::Decode(unsigned char* out, int* count, unsigned char* in, int length) {
  if (!count || (!out && length > 0)) return ResultArgumentNull();
  if (channels_ <= 0) return ResultError("the IMA4 decoder has no channels");
  const int groups = length / PacketBytes / channels_;
  *count = groups * FramesPerPacket;
  short* samples = reinterpret_cast<short*>(out);
  for (int g = 0; g < groups; ++g) {
    short* frames = samples + static_cast<size_t>(g) * FramesPerPacket * channels_;
    for (int c = 0; c < channels_; ++c)
      DecodePacket(in + (static_cast<size_t>(g) * channels_ + c) * PacketBytes, frames + c);
  }
  return Result();
}

}  // namespace Corvane::Mox
