#pragma once
// SilentAudio: the byte pattern of one silent sample value of a PCM or
// companded audio format, and fills buffers with it.

namespace Corvane::Mox {

class Result;

class SilentAudio {
 public:
  // Bytes per sample value of the format's silence (1..8), or 0 when the
  // format is neither linear PCM nor companded. pattern receives them.
  static int GetPattern(unsigned int format, unsigned char pattern[8]);
  // Fills values × bytes of silence; ResultNotSupported "unsupported audio
  // format, '%s'" for a format without silence.
  static Result Fill(unsigned int format, unsigned char* data, long long values);
};

}  // namespace Corvane::Mox
