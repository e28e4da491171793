#pragma once
// Partial video descriptions: what a component accepts or produces. Every
// field is optional. Integer fields use 0 for "unspecified" and a negative
// value v for "anything except ~v" (SetFormatExcept and friends build one).
// Matches tests a full configuration (made from a description with Create)
// against the specified fields; Qualify fills the unspecified ones.

#include "System/Media/MediaTypes.h"
#include "System/Object.h"
#include "System/Rational.h"

namespace Corvane::Mox {

class CVideoProperties;

// Extension data for a video range of 255: code values of black and white.
struct ColorRange {
  int blackLevel = 0;
  int whiteLevel = 0;
  friend bool operator==(const ColorRange& a, const ColorRange& b) {
    return a.blackLevel == b.blackLevel && a.whiteLevel == b.whiteLevel;
  }
};

// Extension data for matrix coefficients or primaries of 255: a 3×3 matrix.
struct ColorMatrix {
  float m[9] = {};
  friend bool operator==(const ColorMatrix& a, const ColorMatrix& b) {
    for (int i = 0; i < 9; ++i)
      if (a.m[i] != b.m[i]) return false;
    return true;
  }
};

// Extension data for transfer characteristics of 255: a power law.
struct TransferCharacteristics {
  float gamma = 0.0f;
  friend bool operator==(const TransferCharacteristics& a, const TransferCharacteristics& b) {
    return a.gamma == b.gamma;
  }
};

// The integer fields: name and index.
#define MOX_VIDEO_CONFIGURATION_FIELDS(X)                                                                        \
  X(Format) X(BitDepth) X(Subsampling) X(ChromaSiting) X(Width) X(Height) X(FieldOrder) X(AlphaChannel)          \
      X(VideoRange) X(MatrixCoefficients) X(ColorPrimaries) X(TransferCharacteristics) X(HorizontalPixelAspectRatio) \
          X(VerticalPixelAspectRatio)

struct VideoConfiguration {
  enum Field : int {
#define MOX_FIELD(name) name##Field,
    MOX_VIDEO_CONFIGURATION_FIELDS(MOX_FIELD)
#undef MOX_FIELD
        FieldCount
  };

  int values[FieldCount] = {};
  long long timeScale = 0;
  long long frameDuration = 0;
  Rational<long long> frameRate{0, 0};
  Rational<int> pixelAspectRatio{0, 0};
  Range<float> referenceLevels;
  bool referenceLevelsSpecified = false;
  bool videoRangeExtensionSpecified = false;
  ColorRange videoRangeExtension;
  bool matrixCoefficientsExtensionSpecified = false;
  ColorMatrix matrixCoefficientsExtension;
  bool colorPrimariesExtensionSpecified = false;
  ColorMatrix colorPrimariesExtension;
  bool transferCharacteristicsExtensionSpecified = false;
  TransferCharacteristics transferCharacteristicsExtension;

#define MOX_FIELD(name)                                                            \
  bool Is##name##Specified() const { return values[name##Field] != 0; }            \
  int Get##name() const { return values[name##Field]; }                            \
  void Set##name(int value) { values[name##Field] = value; }                       \
  void Set##name##Except(int value) { values[name##Field] = ~value; }
  MOX_VIDEO_CONFIGURATION_FIELDS(MOX_FIELD)
#undef MOX_FIELD

  bool IsTimeScaleSpecified() const { return timeScale != 0; }
  long long GetTimeScale() const { return timeScale; }
  void SetTimeScale(long long value) { timeScale = value; }
  bool IsFrameDurationSpecified() const { return frameDuration != 0; }
  long long GetFrameDuration() const { return frameDuration; }
  void SetFrameDuration(long long value) { frameDuration = value; }
  bool IsFrameRateSpecified() const { return frameRate.numerator != 0 && frameRate.denominator != 0; }
  Rational<long long> GetFrameRate() const { return frameRate; }
  void SetFrameRate(Rational<long long> value) { frameRate = value; }
  bool IsPixelAspectRatioSpecified() const { return pixelAspectRatio.numerator != 0 && pixelAspectRatio.denominator != 0; }
  Rational<int> GetPixelAspectRatio() const { return pixelAspectRatio; }
  void SetPixelAspectRatio(Rational<int> value) { pixelAspectRatio = value; }
  bool IsReferenceLevelsSpecified() const { return referenceLevelsSpecified; }
  Range<float> GetReferenceLevels() const { return referenceLevels; }
  void SetReferenceLevels(Range<float> value) {
    referenceLevels = value;
    referenceLevelsSpecified = true;
  }
  bool IsVideoRangeExtensionSpecified() const { return videoRangeExtensionSpecified; }
  ColorRange GetVideoRangeExtension() const { return videoRangeExtension; }
  void SetVideoRangeExtension(ColorRange value) {
    videoRangeExtension = value;
    videoRangeExtensionSpecified = true;
  }
  bool IsMatrixCoefficientsExtensionSpecified() const { return matrixCoefficientsExtensionSpecified; }
  ColorMatrix GetMatrixCoefficientsExtension() const { return matrixCoefficientsExtension; }
  void SetMatrixCoefficientsExtension(ColorMatrix value) {
    matrixCoefficientsExtension = value;
    matrixCoefficientsExtensionSpecified = true;
  }
  bool IsColorPrimariesExtensionSpecified() const { return colorPrimariesExtensionSpecified; }
  ColorMatrix GetColorPrimariesExtension() const { return colorPrimariesExtension; }
  void SetColorPrimariesExtension(ColorMatrix value) {
    colorPrimariesExtension = value;
    colorPrimariesExtensionSpecified = true;
  }
  bool IsTransferCharacteristicsExtensionSpecified() const { return transferCharacteristicsExtensionSpecified; }
  TransferCharacteristics GetTransferCharacteristicsExtension() const { return transferCharacteristicsExtension; }
  void SetTransferCharacteristicsExtension(TransferCharacteristics value) {
    transferCharacteristicsExtension = value;
    transferCharacteristicsExtensionSpecified = true;
  }

  // Every specified field of this equals other's; every negated one differs.
  bool Matches(const VideoConfiguration& other) const;
  // A copy with the unspecified fields taken from other (the colour fields
  // also where they hold 2, unspecified; the extension data where the value
  // is 255).
  VideoConfiguration Qualify(const VideoConfiguration& other) const;
  // True when every field a full description needs is specified.
  bool IsQualified() const;
  // A configuration with every field of a description.
  static VideoConfiguration Create(const CVideoProperties* properties);
  // Writes the specified fields into a description.
  void Apply(CVideoProperties* properties) const;

  friend bool operator==(const VideoConfiguration& a, const VideoConfiguration& b);

 private:
  static VideoConfiguration CreateRaw(const CVideoProperties* properties);
};

// The object form, for collections and for components that hand
// configurations out by reference.
class CVideoConfiguration : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("vcfg");

  CVideoConfiguration();
  explicit CVideoConfiguration(const VideoConfiguration& configuration);

  const VideoConfiguration& GetConfiguration() const { return configuration_; }
  VideoConfiguration& GetConfiguration() { return configuration_; }
  bool Matches(const CVideoProperties* properties) const;
  bool Equals(const CObject* other) const override;
  int GetHashCode() const override;

 private:
  VideoConfiguration configuration_;
};

}  // namespace Corvane::Mox
