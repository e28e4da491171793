#pragma once
// CG726Decode: G.726 ADPCM (WAVE format tag 0x45, QuickTime "g726") to
// 16-bit PCM. Codes of 2 to 5 bits are read most significant bit first,
// decoded into A-law samples by the G.726 decoder and expanded.

#include <memory>

#include "System/Object.h"

namespace Corvane::Mox {

class CWindowsAudioFormat;
class G726State;

class CG726Decode : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("G726");

  explicit CG726Decode(CWindowsAudioFormat* format);
  ~CG726Decode() override;

  // count receives the codes decoded: length x 8 / bitsPerCode (0 for 0
  // bits); out receives as many samples.
  Result Decode(unsigned char* out, unsigned int* count, unsigned char* in, int length, int bitsPerCode);
  // The next Decode starts the decoder from its initial state.
  void Reset() { reset_ = true; }

 private:
  CWindowsAudioFormat* format_;
  bool reset_;
  std::unique_ptr<G726State> state_;
};

}  // namespace Corvane::Mox
