#pragma once
// CImaAdpcmDecode: IMA ADPCM in WAVE files (format tag 0x11) to 16-bit PCM.
// A block holds, per channel, a header (first sample and step index) and then
// groups of four bytes per channel, eight codes each, low nibble first.

#include <vector>

#include "System/Object.h"

namespace Corvane::Mox {

class CImaAdpcmDecodeChannel;
class CWindowsAudioFormat;

class CImaAdpcmDecode : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("IMA ");

  explicit CImaAdpcmDecode(CWindowsAudioFormat* format);
  ~CImaAdpcmDecode() override;

  // Decodes the whole blocks of in; count receives the frames.
  Result Decode(unsigned char* out, int* count, unsigned char* in, int length);
  int GetFramesPerBlock() const;

 private:
  Result DecodeBlock(const unsigned char* block, short* out);

  CWindowsAudioFormat* format_;
  int framesPerBlock_;
  std::vector<CImaAdpcmDecodeChannel*> channels_;
};

}  // namespace Corvane::Mox
