#pragma once
// CAdpcmDecode: Microsoft ADPCM (WAVE format tag 2) to 16-bit PCM. Each block
// starts with a predictor index, a step and two samples per channel; every
// further 4-bit code predicts the next sample from the last two with the
// chosen coefficient pair and adapts the step. Mono and stereo blocks are
// decoded whole; with more channels only the header samples of each block
// are produced (the rest of the block's frames are silence).

#include "System/Object.h"

namespace Corvane::Mox {

class CAdpcmExtension;
class CWindowsAudioFormat;

class CAdpcmDecode : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("DPCM");

  // format may be null; Decode then fails. The format's extension supplies
  // the frames per block and the coefficient pairs.
  explicit CAdpcmDecode(CWindowsAudioFormat* format);
  ~CAdpcmDecode() override;

  // Decodes the whole blocks of in (length bytes) into out, interleaved host
  // order 16-bit samples; count receives the frames (blocks x frames per
  // block). Bytes after the last whole block are ignored.
  Result Decode(unsigned char* out, int* count, unsigned char* in, int length);

  // Frames one block yields, 0 without a format.
  int GetFramesPerBlock() const;

 private:
  struct Channel {
    int c1 = 0, c2 = 0, step = 0, sample1 = 0, sample2 = 0;
  };
  Result DecodeBlock(const unsigned char* block, short* out);
  static short Expand(Channel& channel, int nibble);

  CWindowsAudioFormat* format_;
  CAdpcmExtension* extension_;
};

}  // namespace Corvane::Mox
