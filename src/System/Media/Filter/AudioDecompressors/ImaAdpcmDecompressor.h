#pragma once
// CImaAdpcmDecompressor ("IMA "): the decompressor of IMA ADPCM in WAVE files, producing 16-bit PCM
// ("sowt") through CImaAdpcmDecode.

#include "System/Media/Filter/AudioDecompressors/PcmDecompressor.h"

namespace Corvane::Mox {

class CImaAdpcmDecode;
class CWindowsAudioFormat;

class CImaAdpcmDecompressor : public CPcmDecompressor {
 public:
  static constexpr unsigned int ComponentCode = FourCC("IMA ");

  CImaAdpcmDecompressor();
  ~CImaAdpcmDecompressor() override;

 protected:
  Result Initialize() override;
  Result Finalize() override;
  long long GetOutputFrames(int length) const override;
  Result DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) override;

 private:
  CWindowsAudioFormat* format_ = nullptr;
  CImaAdpcmDecode* decoder_ = nullptr;
};

}  // namespace Corvane::Mox
