#pragma once
// CAppleImaAdpcmDecompressor ("IMA4"): the decompressor of QuickTime IMA4, producing 16-bit PCM
// ("sowt") through CAppleImaAdpcmDecode.

#include "System/Media/Filter/AudioDecompressors/PcmDecompressor.h"

namespace Corvane::Mox {

class CAppleImaAdpcmDecode;
class CWindowsAudioFormat;

class CAppleImaAdpcmDecompressor : public CPcmDecompressor {
 public:
  static constexpr unsigned int ComponentCode = FourCC("IMA4");

  CAppleImaAdpcmDecompressor();
  ~CAppleImaAdpcmDecompressor() override;

 protected:
  Result Initialize() override;
  Result Finalize() override;
  long long GetOutputFrames(int length) const override;
  Result DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) override;

 private:
  CWindowsAudioFormat* format_ = nullptr;
  CAppleImaAdpcmDecode* decoder_ = nullptr;
};

}  // namespace Corvane::Mox
