#pragma once
// CVideoProperties ("vid "): the description of a picture stream: size,
// pixel aspect ratio, clean aperture, orientation, chroma layout, bit depth,
// colour (ITU-T H.273 code points), range, reference levels, alpha and field
// order. A format with fixed parameters (an intra profile, say) carries a
// Configuration whose non-zero values win over the description's own.

#include "System/Media/MediaProperties.h"
#include "System/Media/MediaTypes.h"

namespace Corvane::Mox {

struct ColorSpace {
  unsigned char primaries;
  unsigned char matrix;
  unsigned char transfer;

  friend constexpr bool operator==(const ColorSpace& a, const ColorSpace& b) {
    return a.primaries == b.primaries && a.matrix == b.matrix && a.transfer == b.transfer;
  }
};

class CVideoProperties : public CMediaProperties {
 public:
  static constexpr unsigned int TypeCode = FourCC("vid ");
  static constexpr int MaximumDimension = 131072;
  static constexpr unsigned char Unspecified = 2;

  // The fixed parameters of a format; zero values leave the description's own.
  struct Configuration {
    unsigned int format;
    int width;
    int height;
    Rational<int> pixelAspectRatio;
    int subsampling;
    ColorSpace colorSpace;
    int videoRange;
    Rational<int> frameRate;
    int fieldOrder;
    long long bitRate;
    int alphaChannel;
    int bitDepth;
  };

  CVideoProperties();
  explicit CVideoProperties(const CVideoProperties* source);

  bool IsType(unsigned int type) const override;

  // Also picks up the format's Configuration.
  Result SetFormat(unsigned int format) override;
  const Configuration* GetConfiguration() const { return configuration_; }
  static const Configuration* GetConfiguration(unsigned int format);
  // The Configuration of an Avid compression identifier's equivalent format.
  static const Configuration* GetAvidConfiguration(int id);

  long long GetTimeScale() const override;
  long long GetSampleDuration() const override;
  long long GetBitRate() const override;
  Rational<long long> GetFrameRate() const;
  Result SetFrameRate(Rational<int> rate);
  Result SetFrameRate(Rational<long long> rate);
  long long GetFrameDuration() const { return GetSampleDuration(); }
  Result SetFrameDuration(long long duration) { return SetSampleDuration(duration); }

  int GetFieldOrder() const;
  Result SetFieldOrder(int fieldOrder);
  bool IsInterlaced() const;
  int GetWidth() const;
  Result SetWidth(int width);
  int GetHeight() const;
  Result SetHeight(int height);
  Rational<int> GetPixelAspectRatio() const;
  Result SetPixelAspectRatio(Rational<int> ratio);
  Rectangle<int> GetCleanAperture() const { return cleanAperture_; }
  Result SetCleanAperture(Rectangle<int> insets);
  int GetOrientation() const { return orientation_; }
  Result SetOrientation(int orientation);
  int GetSubsampling() const;
  Result SetSubsampling(int subsampling);
  int GetChromaSiting() const { return chromaSiting_; }
  Result SetChromaSiting(int siting);
  int GetBitDepth() const;
  Result SetBitDepth(int bitDepth);
  unsigned char GetMatrixCoefficients() const;
  Result SetMatrixCoefficients(unsigned char value);
  unsigned char GetColorPrimaries() const;
  Result SetColorPrimaries(unsigned char value);
  unsigned char GetTransferCharacteristics() const;
  Result SetTransferCharacteristics(unsigned char value);
  ColorSpace GetColorSpace() const;
  Result SetColorSpace(ColorSpace colorSpace);
  // Primaries, matrix and transfer in one value: 0xPPMMTT.
  Result SetColorSpace(unsigned int packed);
  int GetVideoRange() const;
  Result SetVideoRange(int range);
  bool IsFullRange() const { return GetVideoRange() == 2; }
  float GetReferenceBlackLevel() const { return referenceBlack_; }
  // Percent, 0..100.
  Result SetReferenceBlackLevel(float level);
  float GetReferenceWhiteLevel() const { return referenceWhite_; }
  Result SetReferenceWhiteLevel(float level);
  // Head: black, tail: white.
  Range<float> GetReferenceLevels() const { return Range<float>(referenceBlack_, referenceWhite_); }
  Result SetReferenceLevels(Range<float> levels);
  int GetAlphaChannel() const;
  Result SetAlphaChannel(int alpha);
  bool HasAlphaChannel() const { return GetAlphaChannel() == 1; }

  // (Width − horizontal insets) × PAR numerator : (Height − vertical insets)
  // × PAR denominator, reduced; 0:0 when either side is 0.
  Rational<int> GetDisplayAspectRatio() const;
  // The colour codes with the unspecified ones filled by picture height.
  ColorSpace GetDefaultColorSpace() const;
  static ColorSpace GetDefaultColorSpace(int height);
  // Bytes of a whole picture (planes one after the other) and of one line of
  // plane n, per the format's plane layout; 0 without one. A stride of 0
  // means the layout's natural stride.
  int GetSampleLength(int stride) const;
  int GetStride(int plane) const;

  int GetSize() const override { return 103; }

 protected:
  Result WriteFields(CBinaryWriter* writer) const override;
  Result ReadFields(CBinaryReader* reader, int size) override;
  void Describe(CProperties* bag) const override;
  bool IsVideo() const override { return true; }
  void HashFields(unsigned int& hash) const override;
  bool SameFields(const CMediaProperties* other) const override;

 private:
  const Configuration* configuration_;
  int fieldOrder_;
  int width_;
  int height_;
  Rational<int> pixelAspectRatio_;
  Rectangle<int> cleanAperture_;
  int orientation_;
  int subsampling_;
  int chromaSiting_;
  int bitDepth_;
  unsigned char matrixCoefficients_;
  unsigned char colorPrimaries_;
  unsigned char transferCharacteristics_;
  int videoRange_;
  float referenceWhite_;
  float referenceBlack_;
  int alphaChannel_;
};

}  // namespace Corvane::Mox
