#include "wfl/ConnectionReasons.h"

#include "System/Collections/ArrayList.h"
#include "System/Media/Filter/AudioFilter.h"
#include "System/Media/Filter/SubtitleFilter.h"
#include "System/Media/Filter/VideoFilter.h"
#include "System/Media/Formats/AudioFormat.h"
#include "System/Media/Formats/SubtitleFormat.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Text.h"

namespace Corvane::Mox::WFL {

namespace {

// A configuration value: 0 unspecified, v > 0 exactly v, v < 0 anything but ~v.
bool Accepts(long long specified, long long actual) {
  if (specified == 0) return true;
  return specified > 0 ? actual == specified : actual != ~specified;
}

bool AcceptsFormat(int specified, unsigned int actual, bool (*isFormat)(unsigned int, unsigned int)) {
  if (specified == 0) return true;
  if (specified > 0) return isFormat(actual, static_cast<unsigned int>(specified));
  return !isFormat(actual, static_cast<unsigned int>(~specified));
}

template <class T>
bool SameRatio(T an, T ad, T bn, T bd) {
  return an * bd == bn * ad;
}

unsigned int VideoMismatches(const VideoConfiguration& c, const VideoConfiguration& a) {
  using R = ConnectionReasons;
  unsigned int flags = 0;
  if (!AcceptsFormat(c.GetFormat(), static_cast<unsigned int>(a.GetFormat()), &VideoFormat::IsFormat)) flags |= R::MediaFormat;
  struct Field {
    int index;
    unsigned int flag;
  };
  static constexpr Field kFields[] = {
      {VideoConfiguration::BitDepthField, R::VideoBitDepth},
      {VideoConfiguration::SubsamplingField, R::ChromaSubsampling},
      {VideoConfiguration::ChromaSitingField, R::ChromaSiting},
      {VideoConfiguration::WidthField, R::FrameWidth},
      {VideoConfiguration::HeightField, R::FrameHeight},
      {VideoConfiguration::FieldOrderField, R::FieldOrder},
      {VideoConfiguration::VideoRangeField, R::VideoRange},
      {VideoConfiguration::MatrixCoefficientsField, R::MatrixCoefficients},
      {VideoConfiguration::ColorPrimariesField, R::ColorPrimaries},
      {VideoConfiguration::TransferCharacteristicsField, R::TransferCharacteristics},
      {VideoConfiguration::AlphaChannelField, R::FilterConfiguration},
  };
  for (const Field& field : kFields)
    if (!Accepts(c.values[field.index], a.values[field.index])) flags |= field.flag;
  if (c.IsReferenceLevelsSpecified() &&
      (c.referenceLevels.head != a.referenceLevels.head || c.referenceLevels.tail != a.referenceLevels.tail))
    flags |= R::VideoReferenceLevels;
  if (c.IsFrameRateSpecified() &&
      !SameRatio(c.frameRate.numerator, c.frameRate.denominator, a.frameRate.numerator, a.frameRate.denominator))
    flags |= R::FrameRate;
  if (c.IsPixelAspectRatioSpecified() &&
      !SameRatio(c.pixelAspectRatio.numerator, c.pixelAspectRatio.denominator, a.pixelAspectRatio.numerator,
                 a.pixelAspectRatio.denominator))
    flags |= R::PixelAspectRatio;
  return flags;
}

unsigned int AudioMismatches(const AudioConfiguration& c, const AudioConfiguration& a) {
  using R = ConnectionReasons;
  unsigned int flags = 0;
  if (!AcceptsFormat(c.format, static_cast<unsigned int>(a.format), &AudioFormat::IsFormat)) flags |= R::MediaFormat;
  if (!Accepts(c.bitsPerSample, a.bitsPerSample)) flags |= R::AudioBitDepth;
  if (!Accepts(c.channels, a.channels)) flags |= R::AudioChannels;
  if (!Accepts(c.sampleRate, a.sampleRate)) flags |= R::SampleRate;
  return flags;
}

unsigned int SubtitleMismatches(const SubtitleConfiguration& c, const SubtitleConfiguration& a) {
  using R = ConnectionReasons;
  unsigned int flags = 0;
  if (!AcceptsFormat(c.format, static_cast<unsigned int>(a.format), &SubtitleFormat::IsFormat)) flags |= R::MediaFormat;
  if (!Accepts(c.timeScale, a.timeScale)) flags |= R::FilterConfiguration;
  return flags;
}

// The attributes every configuration of the filter refuses; Unspecified when
// some configuration has no objection to name (or there are none).
template <class Filter, class Properties, class Configuration, class Compare>
unsigned int Mismatches(const Filter* filter, const CMediaProperties* description, Compare compare) {
  RObject<CArrayList<typename Filter::ConfigurationObject>> configurations(filter->GetInputConfigurations());
  if (!configurations || configurations->GetCount() == 0) return ConnectionReasons::Unspecified;
  const Configuration actual = Configuration::Create(static_cast<const Properties*>(description));
  unsigned int common = ~0u;
  for (int i = 0; i < configurations->GetCount(); ++i) {
    typename Filter::ConfigurationObject* configuration = nullptr;
    configurations->Get(i, configuration);
    RObject<typename Filter::ConfigurationObject> held(configuration);
    common &= compare(configuration->GetConfiguration(), actual);
  }
  return common ? common : ConnectionReasons::Unspecified;
}

}  // namespace

unsigned int ConnectionReasons::Examine(const CMediaFilter* target, const CMediaProperties* description) {
  if (!target || !description) return Unspecified;
  if (const auto* video = dynamic_cast<const CVideoFilter*>(target)) {
    if (!description->IsType(FourCC("vid "))) return MediaFormat;
    return Mismatches<CVideoFilter, CVideoProperties, VideoConfiguration>(video, description, &VideoMismatches);
  }
  if (const auto* audio = dynamic_cast<const CAudioFilter*>(target)) {
    if (!description->IsType(FourCC("aud "))) return MediaFormat;
    return Mismatches<CAudioFilter, CAudioProperties, AudioConfiguration>(audio, description, &AudioMismatches);
  }
  if (const auto* subtitle = dynamic_cast<const CSubtitleFilter*>(target)) {
    if (!description->IsType(FourCC("sub "))) return MediaFormat;
    return Mismatches<CSubtitleFilter, CSubtitleProperties, SubtitleConfiguration>(subtitle, description,
                                                                                   &SubtitleMismatches);
  }
  return Unspecified;
}

std::string ConnectionReasons::Format(const char* from, const char* to, unsigned int flags) {
  static constexpr const char* kNames[] = {
      "media format",        "video bit depth",   "frame rate",          "chroma subsampling",
      "frame width",         "frame height",      "matrix coefficients", "color primaries",
      "transfer characteristics", "video range",  "orientation",         "chroma siting",
      "field order",         "video reference levels", "pixel aspect ratio", "sample rate",
      "audio bit depth",     "audio channels",    "filter configuration", "<unspecified reason>",
  };
  std::string message = std::string("could not connect from '") + from + "' to '" + to + "'";
  if (flags == 0) return message;
  std::string reasons;
  int count = 0;
  for (int bit = 0; bit < static_cast<int>(sizeof kNames / sizeof kNames[0]); ++bit) {
    if (!(flags & (1u << bit))) continue;
    if (count++ > 0) reasons += ", ";
    reasons += kNames[bit];
  }
  return message + "; possibly because: " + reasons + (count == 1 ? " is incompatible" : " are incompatible");
}

}  // namespace Corvane::Mox::WFL
