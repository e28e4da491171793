#include "System/Media/Filter/SilentAudio.h"

#include <cstring>

#include "System/FourString.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Formats/AudioFormat.h"

namespace Corvane::Mox {

namespace {

struct Silence {
  unsigned int format;
  int bytes;
  unsigned char pattern[4];
};

constexpr Silence kSilences[] = {
#define MOX_SILENCE(code, bytes, b0, b1, b2, b3) {FourCC(code), bytes, {b0, b1, b2, b3}},
#include "System/Media/Filter/SilencePatterns.def"
#undef MOX_SILENCE
};

}  // namespace

int SilentAudio::GetPattern(unsigned int format, unsigned char pattern[8]) {
  if (!AudioFormat::IsFormat(format, FourCC("lpcm"))) return 0;
  const unsigned int named = AudioFormat::GetEquivalentFormat(format);
  for (const Silence& silence : kSilences) {
    if (silence.format != format && silence.format != named) continue;
    std::memset(pattern, 0, 8);
    std::memcpy(pattern, silence.pattern, static_cast<size_t>(silence.bytes));
    return silence.bytes;
  }
  int bytes = CAudioProperties::GetBytesPerSample(format);
  if (bytes <= 0 && named) bytes = CAudioProperties::GetBytesPerSample(named);
  if (bytes <= 0 || bytes > 8) return 0;
  std::memset(pattern, 0, 8);
  return bytes;
}

Result SilentAudio::Fill(unsigned int format, unsigned char* data, long long values) {
  unsigned char pattern[8];
  const int bytes = GetPattern(format, pattern);
  if (bytes == 0) return ResultNotSupported("unsupported audio format, '%s'", FourString(format).GetChars());
  if (!data && values > 0) return ResultArgumentNull();
  for (long long i = 0; i < values; ++i) std::memcpy(data + i * bytes, pattern, static_cast<size_t>(bytes));
  return Result();
}

}  // namespace Corvane::Mox
