#pragma once
// CG711Decompressor ("G711"): A-law and µ-law in WAVE files (and QuickTime
// "g711", taken as µ-law) to 16-bit PCM ("sowt").

#include "System/Media/Filter/AudioDecompressors/PcmDecompressor.h"

namespace Corvane::Mox {

class CG711Decode;
class CWindowsAudioFormat;

class CG711Decompressor : public CPcmDecompressor {
 public:
  static constexpr unsigned int ComponentCode = FourCC("G711");

  CG711Decompressor();
  ~CG711Decompressor() override;

  // The expansion keeps no state between buffers; nothing is held back.
  void Flush() override;

 protected:
  Result Initialize() override;
  Result Finalize() override;
  long long GetOutputFrames(int length) const override;
  Result DecodeBuffer(unsigned char* out, long long& frames, unsigned char* in, int length) override;

 private:
  CWindowsAudioFormat* format_ = nullptr;
  CG711Decode* decoder_ = nullptr;
};

}  // namespace Corvane::Mox
