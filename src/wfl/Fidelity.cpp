#include "wfl/Fidelity.h"

#include <algorithm>
#include <cstring>
#include <numeric>

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox::WFL {

namespace {

constexpr unsigned int kVideo = FourCC("vid ");
constexpr unsigned int kAudio = FourCC("aud ");
constexpr unsigned int kSubtitle = FourCC("sub ");

// Bits per pixel of a description: alpha (32 with, 16 without) plus chroma
// (32 spread over the subsampled area), times the bit depth.
int VideoLoss(const CVideoProperties* from, const CVideoProperties* to) {
  const int depthA = std::max(from->GetBitDepth(), 1);
  const int depthB = std::max(to->GetBitDepth(), 1);
  const int subsamplingA = from->GetSubsampling();
  const int subsamplingB = to->GetSubsampling();
  if (subsamplingA == 0 || subsamplingB == 0) return 16 * depthA;
  const int hA = subsamplingA & 0xF;
  const int vA = (subsamplingA >> 4) & 0xF;
  // The retained resolution cannot exceed the source's.
  const int hB = std::max(subsamplingB & 0xF, hA);
  const int vB = std::max((subsamplingB >> 4) & 0xF, vA);
  const int alphaA = from->HasAlphaChannel() ? 32 : 16;
  const int alphaB = from->HasAlphaChannel() && to->HasAlphaChannel() ? 32 : 16;
  const int chromaA = hA * vA != 0 ? 32 / (hA * vA) : 0;
  const int chromaB = hB * vB != 0 ? 32 / (hB * vB) : 0;
  return (alphaA + chromaA) * depthA - (alphaB + chromaB) * std::min(depthA, depthB);
}

int AudioLoss(const CAudioProperties* from, const CAudioProperties* to) {
  const int rateA = static_cast<int>(from->GetSampleRate());
  const int rateB = static_cast<int>(to->GetSampleRate());
  const int channelsA = from->GetChannels();
  const int channelsB = to->GetChannels();
  const int bitsA = from->GetBitsPerSample();
  const int bitsB = to->GetBitsPerSample();
  // 32-bit wrap-around arithmetic, as the ranking has always used.
  const unsigned int kept = static_cast<unsigned int>(std::min(rateA, rateB)) *
                            static_cast<unsigned int>(std::min(channelsA, channelsB)) *
                            static_cast<unsigned int>(std::min(bitsA, bitsB));
  const unsigned int whole =
      static_cast<unsigned int>(rateA) * static_cast<unsigned int>(channelsA) * static_cast<unsigned int>(bitsA);
  return static_cast<int>(whole - kept) >> 13;
}

void Mix(unsigned int& hash, unsigned int value) {
  hash += value;
  hash += hash << 10;
  hash ^= hash >> 6;
}

template <class T>
void MixReduced(unsigned int& hash, T numerator, T denominator) {
  if (numerator == 0 || denominator == 0) {
    Mix(hash, 0);
    Mix(hash, 0);
    return;
  }
  const T divisor = std::gcd(numerator, denominator);
  Mix(hash, static_cast<unsigned int>(numerator / divisor));
  Mix(hash, static_cast<unsigned int>(denominator / divisor));
}

unsigned int Bits(float value) {
  unsigned int bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

unsigned int HashVideo(const CVideoProperties* video) {
  unsigned int hash = 0;
  Mix(hash, video->GetFormat());
  Mix(hash, static_cast<unsigned int>(video->GetWidth()));
  Mix(hash, static_cast<unsigned int>(video->GetHeight()));
  const Rational<int> aspect = video->GetPixelAspectRatio();
  MixReduced(hash, aspect.numerator, aspect.denominator);
  Mix(hash, static_cast<unsigned int>(video->GetSubsampling()));
  Mix(hash, video->GetMatrixCoefficients());
  Mix(hash, video->GetColorPrimaries());
  Mix(hash, video->GetTransferCharacteristics());
  Mix(hash, Bits(video->GetReferenceBlackLevel()));
  Mix(hash, Bits(video->GetReferenceWhiteLevel()));
  Mix(hash, static_cast<unsigned int>(video->GetVideoRange()));
  Mix(hash, static_cast<unsigned int>(video->GetFieldOrder()));
  const Rational<long long> rate = video->GetFrameRate();
  MixReduced(hash, rate.numerator, rate.denominator);
  return hash;
}

unsigned int HashAudio(const CAudioProperties* audio) {
  unsigned int hash = 0;
  Mix(hash, audio->GetFormat());
  Mix(hash, static_cast<unsigned int>(audio->GetSampleRate()));
  Mix(hash, static_cast<unsigned int>(audio->GetChannels()));
  Mix(hash, static_cast<unsigned int>(audio->GetBitsPerSample()));
  return hash;
}

unsigned int HashSubtitle(const CMediaProperties* subtitle) {
  unsigned int hash = 0;
  Mix(hash, subtitle->GetFormat());
  const Rational<long long> rate = subtitle->GetMediaSampleRate();
  MixReduced(hash, rate.numerator, rate.denominator);
  return hash;
}

}  // namespace

float CFidelity::GetFidelityLoss(const CMediaProperties* from, const CMediaProperties* to) {
  if (!from || !to) return 0.0f;
  if (from->IsType(kVideo) && to->IsType(kVideo))
    return static_cast<float>(
        VideoLoss(static_cast<const CVideoProperties*>(from), static_cast<const CVideoProperties*>(to)));
  if (from->IsType(kAudio) && to->IsType(kAudio))
    return static_cast<float>(
        AudioLoss(static_cast<const CAudioProperties*>(from), static_cast<const CAudioProperties*>(to)));
  return 0.0f;
}

unsigned int CFidelity::GetHashCode(const CMediaProperties* properties) {
  if (!properties) return 0;
  if (properties->IsType(kVideo)) return HashVideo(static_cast<const CVideoProperties*>(properties));
  if (properties->IsType(kAudio)) return HashAudio(static_cast<const CAudioProperties*>(properties));
  if (properties->IsType(kSubtitle)) return HashSubtitle(properties);
  throw ResultUnexpected("media type '%08x' has no fidelity hash", properties->GetType());
}

}  // namespace Corvane::Mox::WFL
