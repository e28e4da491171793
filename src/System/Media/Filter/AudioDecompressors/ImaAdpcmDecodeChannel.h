#pragma once
// CImaAdpcmDecodeChannel: one channel of an IMA ADPCM decoder: the predicted
// sample, the step index and where the channel's next output goes (channels
// are interleaved, so positions advance by the channel count). Expand is the
// IMA code step shared by the WAVE and QuickTime variants.

#include "System/Object.h"

namespace Corvane::Mox {

class CImaAdpcmDecodeChannel : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("imac");

  explicit CImaAdpcmDecodeChannel(int channels);

  // Starts a block: the channel's first sample, its step index (limited to
  // the table) and the position of its first output.
  void Start(int sample, int index, short* out);
  // Writes the sample of one 4-bit code at the channel's position.
  void Put(int nibble);
  int GetSample() const { return sample_; }
  int GetIndex() const { return index_; }

  // One IMA step: updates predictor and index, returns the new sample.
  static int Expand(int nibble, int& predictor, int& index);
  static constexpr int MaximumIndex = 88;

 private:
  int channels_;
  int index_;
  int sample_;
  short* out_;
};

}  // namespace Corvane::Mox
