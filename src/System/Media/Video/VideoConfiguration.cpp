#include "System/Media/Video/VideoConfiguration.h"

#include <cstring>

#include "System/Media/Video/VideoProperties.h"

namespace Corvane::Mox {

namespace {

// A specified value v accepts exactly v; a negated one accepts all but ~v.
bool Accepts(int wanted, int actual) {
  if (wanted == 0) return true;
  return wanted > 0 ? actual == wanted : actual != ~wanted;
}

bool SameRate(Rational<long long> a, Rational<long long> b) {
  return a.numerator * b.denominator == b.numerator * a.denominator && (a.denominator != 0) == (b.denominator != 0);
}

// Levels compare bit for bit, so that a level that is not a number (from a
// damaged form) still equals itself.
bool SameLevels(Range<float> a, Range<float> b) {
  return std::memcmp(&a.head, &b.head, sizeof a.head) == 0 && std::memcmp(&a.tail, &b.tail, sizeof a.tail) == 0;
}

bool IsColourField(int field) {
  return field == VideoConfiguration::MatrixCoefficientsField || field == VideoConfiguration::ColorPrimariesField ||
         field == VideoConfiguration::TransferCharacteristicsField;
}

}  // namespace

bool VideoConfiguration::Matches(const VideoConfiguration& other) const {
  for (int i = 0; i < FieldCount; ++i) {
    if (!Accepts(values[i], other.values[i])) return false;
  }
  if (IsTimeScaleSpecified() && timeScale != other.timeScale) return false;
  if (IsFrameDurationSpecified() && frameDuration != other.frameDuration) return false;
  if (IsFrameRateSpecified() && !SameRate(frameRate, other.frameRate)) return false;
  if (IsPixelAspectRatioSpecified() &&
      !SameRate(Rational<long long>(pixelAspectRatio.numerator, pixelAspectRatio.denominator),
                Rational<long long>(other.pixelAspectRatio.numerator, other.pixelAspectRatio.denominator)))
    return false;
  if (referenceLevelsSpecified && !(other.referenceLevelsSpecified && SameLevels(referenceLevels, other.referenceLevels)))
    return false;
  if (videoRangeExtensionSpecified && !(other.videoRangeExtensionSpecified && videoRangeExtension == other.videoRangeExtension))
    return false;
  if (matrixCoefficientsExtensionSpecified &&
      !(other.matrixCoefficientsExtensionSpecified && matrixCoefficientsExtension == other.matrixCoefficientsExtension))
    return false;
  if (colorPrimariesExtensionSpecified &&
      !(other.colorPrimariesExtensionSpecified && colorPrimariesExtension == other.colorPrimariesExtension))
    return false;
  if (transferCharacteristicsExtensionSpecified &&
      !(other.transferCharacteristicsExtensionSpecified &&
        transferCharacteristicsExtension == other.transferCharacteristicsExtension))
    return false;
  return true;
}

VideoConfiguration VideoConfiguration::Qualify(const VideoConfiguration& other) const {
  VideoConfiguration out = *this;
  for (int i = 0; i < FieldCount; ++i) {
    bool open = out.values[i] == 0 || (IsColourField(i) && out.values[i] == CVideoProperties::Unspecified);
    if (open) out.values[i] = other.values[i];
  }
  if (!out.IsTimeScaleSpecified()) out.timeScale = other.timeScale;
  if (!out.IsFrameDurationSpecified()) out.frameDuration = other.frameDuration;
  if (!out.IsFrameRateSpecified()) out.frameRate = other.frameRate;
  if (!out.IsPixelAspectRatioSpecified()) out.pixelAspectRatio = other.pixelAspectRatio;
  if (!out.referenceLevelsSpecified && other.referenceLevelsSpecified) out.SetReferenceLevels(other.referenceLevels);
  // Extension data travels with a value of 255 that came from other.
  if (out.GetVideoRange() == 255 && !out.videoRangeExtensionSpecified && other.videoRangeExtensionSpecified)
    out.SetVideoRangeExtension(other.videoRangeExtension);
  if (out.GetMatrixCoefficients() == 255 && !out.matrixCoefficientsExtensionSpecified &&
      other.matrixCoefficientsExtensionSpecified)
    out.SetMatrixCoefficientsExtension(other.matrixCoefficientsExtension);
  if (out.GetColorPrimaries() == 255 && !out.colorPrimariesExtensionSpecified && other.colorPrimariesExtensionSpecified)
    out.SetColorPrimariesExtension(other.colorPrimariesExtension);
  if (out.GetTransferCharacteristics() == 255 && !out.transferCharacteristicsExtensionSpecified &&
      other.transferCharacteristicsExtensionSpecified)
    out.SetTransferCharacteristicsExtension(other.transferCharacteristicsExtension);
  return out;
}

bool VideoConfiguration::IsQualified() const {
  static const Field kNeeded[] = {FormatField,      BitDepthField,           SubsamplingField,   WidthField,
                                  HeightField,      FieldOrderField,         VideoRangeField,    MatrixCoefficientsField,
                                  ColorPrimariesField, TransferCharacteristicsField};
  for (Field field : kNeeded) {
    if (values[field] <= 0) return false;
  }
  return IsFrameRateSpecified() && IsPixelAspectRatioSpecified();
}

// A full configuration holds plain values only: a negative value (which a
// binary form can carry, though no setter accepts it) would read as "anything
// except", so it becomes unspecified.
VideoConfiguration VideoConfiguration::Create(const CVideoProperties* p) {
  VideoConfiguration c;
  if (!p) return c;
  c = CreateRaw(p);
  for (int& value : c.values) {
    if (value < 0) value = 0;
  }
  return c;
}

VideoConfiguration VideoConfiguration::CreateRaw(const CVideoProperties* p) {
  VideoConfiguration c;
  c.SetFormat(static_cast<int>(p->GetFormat()));
  c.SetBitDepth(p->GetBitDepth());
  c.SetSubsampling(p->GetSubsampling());
  c.SetChromaSiting(p->GetChromaSiting());
  c.SetWidth(p->GetWidth());
  c.SetHeight(p->GetHeight());
  c.SetFieldOrder(p->GetFieldOrder());
  c.SetAlphaChannel(p->GetAlphaChannel());
  c.SetVideoRange(p->GetVideoRange());
  c.SetMatrixCoefficients(p->GetMatrixCoefficients());
  c.SetColorPrimaries(p->GetColorPrimaries());
  c.SetTransferCharacteristics(p->GetTransferCharacteristics());
  Rational<int> par = p->GetPixelAspectRatio();
  c.SetPixelAspectRatio(par);
  c.SetHorizontalPixelAspectRatio(par.numerator);
  c.SetVerticalPixelAspectRatio(par.denominator);
  c.SetTimeScale(p->GetTimeScale());
  c.SetFrameDuration(p->GetFrameDuration());
  c.SetFrameRate(p->GetFrameRate());
  c.SetReferenceLevels(p->GetReferenceLevels());
  return c;
}

void VideoConfiguration::Apply(CVideoProperties* p) const {
  if (!p) return;
  if (GetFormat() > 0) p->SetFormat(static_cast<unsigned int>(GetFormat()));
  if (GetBitDepth() > 0) p->SetBitDepth(GetBitDepth());
  if (GetSubsampling() > 0) p->SetSubsampling(GetSubsampling());
  if (GetChromaSiting() > 0) p->SetChromaSiting(GetChromaSiting());
  if (GetWidth() > 0) p->SetWidth(GetWidth());
  if (GetHeight() > 0) p->SetHeight(GetHeight());
  if (GetFieldOrder() > 0) p->SetFieldOrder(GetFieldOrder());
  if (GetAlphaChannel() > 0) p->SetAlphaChannel(GetAlphaChannel());
  if (GetVideoRange() > 0) p->SetVideoRange(GetVideoRange());
  if (GetMatrixCoefficients() > 0) p->SetMatrixCoefficients(static_cast<unsigned char>(GetMatrixCoefficients()));
  if (GetColorPrimaries() > 0) p->SetColorPrimaries(static_cast<unsigned char>(GetColorPrimaries()));
  if (GetTransferCharacteristics() > 0)
    p->SetTransferCharacteristics(static_cast<unsigned char>(GetTransferCharacteristics()));
  if (IsPixelAspectRatioSpecified()) p->SetPixelAspectRatio(pixelAspectRatio);
  if (IsFrameRateSpecified()) p->SetFrameRate(frameRate);
  if (referenceLevelsSpecified) p->SetReferenceLevels(referenceLevels);
}

bool operator==(const VideoConfiguration& a, const VideoConfiguration& b) {
  for (int i = 0; i < VideoConfiguration::FieldCount; ++i) {
    if (a.values[i] != b.values[i]) return false;
  }
  return a.timeScale == b.timeScale && a.frameDuration == b.frameDuration && a.frameRate == b.frameRate &&
         a.pixelAspectRatio == b.pixelAspectRatio && a.referenceLevelsSpecified == b.referenceLevelsSpecified &&
         (!a.referenceLevelsSpecified || SameLevels(a.referenceLevels, b.referenceLevels)) &&
         a.videoRangeExtensionSpecified == b.videoRangeExtensionSpecified &&
         (!a.videoRangeExtensionSpecified || a.videoRangeExtension == b.videoRangeExtension) &&
         a.matrixCoefficientsExtensionSpecified == b.matrixCoefficientsExtensionSpecified &&
         (!a.matrixCoefficientsExtensionSpecified || a.matrixCoefficientsExtension == b.matrixCoefficientsExtension) &&
         a.colorPrimariesExtensionSpecified == b.colorPrimariesExtensionSpecified &&
         (!a.colorPrimariesExtensionSpecified || a.colorPrimariesExtension == b.colorPrimariesExtension) &&
         a.transferCharacteristicsExtensionSpecified == b.transferCharacteristicsExtensionSpecified &&
         (!a.transferCharacteristicsExtensionSpecified ||
          a.transferCharacteristicsExtension == b.transferCharacteristicsExtension);
}

CVideoConfiguration::CVideoConfiguration() : CObject(TypeCode) {}

CVideoConfiguration::CVideoConfiguration(const VideoConfiguration& configuration)
    : CObject(TypeCode), configuration_(configuration) {}

bool CVideoConfiguration::Matches(const CVideoProperties* properties) const {
  return properties && configuration_.Matches(VideoConfiguration::Create(properties));
}

bool CVideoConfiguration::Equals(const CObject* other) const {
  return other && other->IsType(TypeCode) &&
         static_cast<const CVideoConfiguration*>(other)->configuration_ == configuration_;
}

int CVideoConfiguration::GetHashCode() const {
  unsigned int hash = 0;
  for (int value : configuration_.values) {
    hash += static_cast<unsigned int>(value);
    hash += hash << 10;
    hash ^= hash >> 6;
  }
  return static_cast<int>(hash);
}

}  // namespace Corvane::Mox
