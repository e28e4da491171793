#pragma once
// G726State: the ITU-T G.726 ADPCM decoder (16, 24, 32 and 40 kbit/s, 2 to
// 5 bits per code), built block by block from the Recommendation: the
// adaptive predictor and its pole and zero sections, the inverse adaptive
// quantizer, the quantizer scale factor with its speed control, the tone and
// transition detectors, and the output stage that turns the reconstructed
// signal into A-law codes with the synchronous coding adjustment (so that
// decoders in tandem do not accumulate distortion).
//
// Signals keep the Recommendation's fixed-point formats: two's complement
// and sign-magnitude words of stated widths, and the 11-bit floating format
// (sign, 4-bit exponent, 6-bit mantissa) of the predictor's delay line.

#include <cstdint>

namespace Corvane::Mox {

class G726State {
 public:
  G726State() { Reset(); }

  // The initial state of the Recommendation's reset.
  void Reset();
  // Decodes one code of `bits` bits (2..5) into an A-law code.
  uint8_t DecodeToAlaw(int code, int bits);

 private:
  struct Rate;
  static const Rate* RateOf(int bits);

  int PredictorZero() const;  // sum of the six zero-section products
  int PredictorPole() const;  // sum of the two pole-section products
  int ScaleFactor() const;    // the mixed fast and slow scale factors, Y
  uint8_t Synchronise(uint8_t alaw, int code, int se, int y, const Rate& rate) const;
  void Adapt(int code, const Rate& rate, int y, int dq, int sr, int dqsez);

  // Words hold the bit patterns of their formats (a 16-bit two's complement
  // value is 0..65535), as the Recommendation's arithmetic is defined on them.
  int b_[6];          // zero-section coefficients, 16-bit two's complement
  int dq_[6];         // quantized differences, floating format
  int a_[2];          // pole-section coefficients
  int sr_[2];         // reconstructed signals, floating format
  int pk_[2];         // signs of past dq + sez
  int yu_, yl_;       // fast and slow scale factors
  int dms_, dml_;     // short- and long-term averages of F(I)
  int ap_;            // speed control
  bool td_;           // tone detected
};

}  // namespace Corvane::Mox
