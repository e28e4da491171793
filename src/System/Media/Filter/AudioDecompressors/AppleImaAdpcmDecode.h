#pragma once
// CAppleImaAdpcmDecode: QuickTime IMA4 to 16-bit PCM. Every 64 frames are one
// 34-byte packet per channel: a big-endian header (the starting predictor in
// its upper nine bits, the step index in the lower seven) and 32 bytes of
// codes, low nibble first. Each packet restarts from its own header.

#include "System/Object.h"

namespace Corvane::Mox {

class CAppleImaAdpcmDecode : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("IMA4");
  static constexpr int PacketBytes = 34;
  static constexpr int FramesPerPacket = 64;

  explicit CAppleImaAdpcmDecode(int channels);

  // count receives the frames: whole packet groups x 64.
  Result Decode(unsigned char* out, int* count, unsigned char* in, int length);
  // Decodes one channel's packet into every channels-th sample of out.
  void DecodePacket(const unsigned char* packet, short* out) const;

 private:
  int channels_;
};

}  // namespace Corvane::Mox
