#pragma once
// CAdpcmDecompressor ("DPCM"): the decompressor of Microsoft ADPCM, producing 16-bit PCM
// ("sowt") through CAdpcmDecode.

#include "System/Media/Filter/AudioDecompressors/PcmDecompressor.h"

namespace Corvane::Mox {

class CAdpcmDecode;
class CWindowsAudioFormat;

class CAdpcmDecompressor : public CPcmDecompressor {
 public:
  static constexpr unsigned int ComponentCode = FourCC("DPCM");

  CAdpcmDecompressor();
  ~CAdpcmDecompressor() override;

 protected:
  Result Initialize() override;
  Result Finalize() override;
  long long GetOutputFrames(int length) const override;
  Result DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) override;

 private:
  CWindowsAudioFormat* format_ = nullptr;
  CAdpcmDecode* decoder_ = nullptr;
};

}  // namespace Corvane::Mox
