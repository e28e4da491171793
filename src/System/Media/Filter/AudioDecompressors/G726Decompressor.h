#pragma once
// CG726Decompressor ("G726"): G.726 ADPCM (WAVE tag 0x45, QuickTime "g726")
// to 16-bit PCM ("sowt"). The code width is the stream's bits per sample
// (2 to 5), or its bit rate over its sample rate.

#include "System/Media/Filter/AudioDecompressors/PcmDecompressor.h"

namespace Corvane::Mox {

class CG726Decode;
class CWindowsAudioFormat;

class CG726Decompressor : public CPcmDecompressor {
 public:
  static constexpr unsigned int ComponentCode = FourCC("G726");

  CG726Decompressor();
  ~CG726Decompressor() override;

  // Forgets the decoder's adaptation: the next buffer starts a new stream.
  void Flush() override;
  int GetBitsPerCode() const { return bitsPerCode_; }

 protected:
  Result Initialize() override;
  Result Finalize() override;
  long long GetOutputFrames(int length) const override;
  Result DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) override;

 private:
  CWindowsAudioFormat* format_ = nullptr;
  CG726Decode* decoder_ = nullptr;
  int bitsPerCode_ = 0;
};

}  // namespace Corvane::Mox
