#include "System/Media/Video/VideoProperties.h"

#include <cstring>
#include <numeric>

#include "System/Console.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/Formats/AvidCompression.h"
#include "System/Media/Video/PlaneLayout.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

constexpr unsigned int F(const char (&code)[5]) { return FourCC(code); }

const CVideoProperties::Configuration kConfigurations[] = {
#define MOX_VIDEO_CONFIGURATION(format, width, height, parN, parD, subsampling, primaries, matrix, transfer, range, \
                                rateN, rateD, fieldOrder, bitRate, alpha, depth)                                  \
  {format, width, height, {parN, parD}, subsampling, {primaries, matrix, transfer}, range, {rateN, rateD},          \
   fieldOrder, bitRate, alpha, depth},
#include "System/Media/Video/VideoConfigurations.def"
#undef MOX_VIDEO_CONFIGURATION
};

// The configuration's value when it has a non-zero one, else the own one.
template <class T>
T Prefer(const CVideoProperties::Configuration* c, T CVideoProperties::Configuration::*field, T own) {
  return c && c->*field ? c->*field : own;
}

// Levels compare as the hash sees them, bit for bit, so that a level read
// from a damaged form (NaN, say) still equals itself.
bool SameBits(float a, float b) { return std::memcmp(&a, &b, sizeof a) == 0; }

Rational<int> Reduce(Rational<int> r) {
  if (r.numerator == 0 || r.denominator == 0) return Rational<int>(0, 0);
  int g = std::gcd(r.numerator, r.denominator);
  return Rational<int>(r.numerator / g, r.denominator / g);
}

}  // namespace

CVideoProperties::CVideoProperties()
    : CMediaProperties(TypeCode, nullptr),
      configuration_(nullptr),
      fieldOrder_(0),
      width_(0),
      height_(0),
      pixelAspectRatio_(1, 1),
      orientation_(0),
      subsampling_(0),
      chromaSiting_(0),
      bitDepth_(0),
      matrixCoefficients_(Unspecified),
      colorPrimaries_(Unspecified),
      transferCharacteristics_(Unspecified),
      videoRange_(0),
      referenceWhite_(0.0f),
      referenceBlack_(0.0f),
      alphaChannel_(0) {}

CVideoProperties::CVideoProperties(const CVideoProperties* source)
    : CMediaProperties(TypeCode, source),
      configuration_(source->configuration_),
      fieldOrder_(source->fieldOrder_),
      width_(source->width_),
      height_(source->height_),
      pixelAspectRatio_(source->pixelAspectRatio_),
      cleanAperture_(source->cleanAperture_),
      orientation_(source->orientation_),
      subsampling_(source->subsampling_),
      chromaSiting_(source->chromaSiting_),
      bitDepth_(source->bitDepth_),
      matrixCoefficients_(source->matrixCoefficients_),
      colorPrimaries_(source->colorPrimaries_),
      transferCharacteristics_(source->transferCharacteristics_),
      videoRange_(source->videoRange_),
      referenceWhite_(source->referenceWhite_),
      referenceBlack_(source->referenceBlack_),
      alphaChannel_(source->alphaChannel_) {}

bool CVideoProperties::IsType(unsigned int type) const { return type == TypeCode || CMediaProperties::IsType(type); }

const CVideoProperties::Configuration* CVideoProperties::GetConfiguration(unsigned int format) {
  for (const Configuration& c : kConfigurations) {
    if (c.format == format) return &c;
  }
  return nullptr;
}

const CVideoProperties::Configuration* CVideoProperties::GetAvidConfiguration(int id) {
  unsigned int format = AvidCompression::GetEquivalentFormat(id);
  return format ? GetConfiguration(format) : nullptr;
}

Result CVideoProperties::SetFormat(unsigned int format) {
  Result r = CMediaProperties::SetFormat(format);
  if (r.Succeeded()) configuration_ = GetConfiguration(format);
  return r;
}

// Timing: the configuration's rate applies only while the own scale is unset.
long long CVideoProperties::GetTimeScale() const {
  const Configuration* c = configuration_;
  long long own = CMediaProperties::GetTimeScale();
  return c && c->frameRate.numerator != 0 && own == 0 ? c->frameRate.numerator : own;
}

long long CVideoProperties::GetSampleDuration() const {
  const Configuration* c = configuration_;
  if (c && c->frameRate.numerator != 0 && CMediaProperties::GetTimeScale() == 0) return c->frameRate.denominator;
  return CMediaProperties::GetSampleDuration();
}

long long CVideoProperties::GetBitRate() const {
  long long own = CMediaProperties::GetBitRate();
  return own == 0 && configuration_ ? configuration_->bitRate : own;
}

Rational<long long> CVideoProperties::GetFrameRate() const { return GetMediaSampleRate(); }

Result CVideoProperties::SetFrameRate(Rational<int> rate) {
  return SetMediaSampleRate(Rational<long long>(rate.numerator, rate.denominator));
}

Result CVideoProperties::SetFrameRate(Rational<long long> rate) { return SetMediaSampleRate(rate); }

// Fields --------------------------------------------------------------------

int CVideoProperties::GetFieldOrder() const { return Prefer(configuration_, &Configuration::fieldOrder, fieldOrder_); }

Result CVideoProperties::SetFieldOrder(int fieldOrder) {
  if (fieldOrder < 0 || fieldOrder > 5) return ResultArgumentOutOfRange();
  fieldOrder_ = fieldOrder;
  return Result();
}

bool CVideoProperties::IsInterlaced() const {
  int order = GetFieldOrder();
  return order >= 2;
}

int CVideoProperties::GetWidth() const { return Prefer(configuration_, &Configuration::width, width_); }

Result CVideoProperties::SetWidth(int width) {
  if (width < 0 || width > MaximumDimension) return ResultArgumentOutOfRange();
  width_ = width;
  return Result();
}

int CVideoProperties::GetHeight() const { return Prefer(configuration_, &Configuration::height, height_); }

Result CVideoProperties::SetHeight(int height) {
  if (height < 0 || height > MaximumDimension) return ResultArgumentOutOfRange();
  height_ = height;
  return Result();
}

Rational<int> CVideoProperties::GetPixelAspectRatio() const {
  if (configuration_ && configuration_->pixelAspectRatio.numerator != 0) return configuration_->pixelAspectRatio;
  return pixelAspectRatio_;
}

Result CVideoProperties::SetPixelAspectRatio(Rational<int> ratio) {
  if (ratio.numerator < 0 || ratio.denominator <= 0) return ResultArgumentOutOfRange();
  pixelAspectRatio_ = ratio;
  return Result();
}

Result CVideoProperties::SetCleanAperture(Rectangle<int> insets) {
  if (insets.left < 0 || insets.right < 0 || insets.top < 0 || insets.bottom < 0) return ResultArgumentOutOfRange();
  cleanAperture_ = insets;
  return Result();
}

Result CVideoProperties::SetOrientation(int orientation) {
  if (orientation < 0 || orientation >= 16) return ResultArgumentOutOfRange();
  if (orientation & 8) MOX_LOG(Console::Warning, "is deprecated, please use a combination of Mirrored and Rotate.");
  orientation_ = orientation;
  return Result();
}

int CVideoProperties::GetSubsampling() const { return Prefer(configuration_, &Configuration::subsampling, subsampling_); }

Result CVideoProperties::SetSubsampling(int subsampling) {
  if (subsampling < 0 || subsampling >= 256) return ResultArgumentOutOfRange();
  subsampling_ = subsampling;
  return Result();
}

Result CVideoProperties::SetChromaSiting(int siting) {
  if (siting < 0 || siting >= 6) return ResultArgumentOutOfRange();
  chromaSiting_ = siting;
  return Result();
}

int CVideoProperties::GetBitDepth() const { return Prefer(configuration_, &Configuration::bitDepth, bitDepth_); }

Result CVideoProperties::SetBitDepth(int bitDepth) {
  bitDepth_ = bitDepth;
  return Result();
}

// The configuration's colour wins unless it is itself unspecified.
unsigned char CVideoProperties::GetMatrixCoefficients() const {
  return configuration_ && configuration_->colorSpace.matrix != Unspecified ? configuration_->colorSpace.matrix
                                                                            : matrixCoefficients_;
}

unsigned char CVideoProperties::GetColorPrimaries() const {
  return configuration_ && configuration_->colorSpace.primaries != Unspecified ? configuration_->colorSpace.primaries
                                                                               : colorPrimaries_;
}

unsigned char CVideoProperties::GetTransferCharacteristics() const {
  return configuration_ && configuration_->colorSpace.transfer != Unspecified ? configuration_->colorSpace.transfer
                                                                              : transferCharacteristics_;
}

Result CVideoProperties::SetMatrixCoefficients(unsigned char value) {
  matrixCoefficients_ = value;
  return Result();
}

Result CVideoProperties::SetColorPrimaries(unsigned char value) {
  colorPrimaries_ = value;
  return Result();
}

Result CVideoProperties::SetTransferCharacteristics(unsigned char value) {
  transferCharacteristics_ = value;
  return Result();
}

ColorSpace CVideoProperties::GetColorSpace() const {
  return ColorSpace{GetColorPrimaries(), GetMatrixCoefficients(), GetTransferCharacteristics()};
}

Result CVideoProperties::SetColorSpace(ColorSpace colorSpace) {
  colorPrimaries_ = colorSpace.primaries;
  matrixCoefficients_ = colorSpace.matrix;
  transferCharacteristics_ = colorSpace.transfer;
  return Result();
}

Result CVideoProperties::SetColorSpace(unsigned int packed) {
  if (packed > 0xFFFFFF) return ResultArgumentOutOfRange();
  return SetColorSpace(ColorSpace{static_cast<unsigned char>(packed >> 16), static_cast<unsigned char>(packed >> 8),
                                  static_cast<unsigned char>(packed)});
}

int CVideoProperties::GetVideoRange() const { return Prefer(configuration_, &Configuration::videoRange, videoRange_); }

Result CVideoProperties::SetVideoRange(int range) {
  videoRange_ = range;
  return Result();
}

Result CVideoProperties::SetReferenceBlackLevel(float level) {
  if (!(level >= 0.0f && level <= 100.0f)) return ResultArgumentOutOfRange("reference black level %.2f", level);
  referenceBlack_ = level;
  return Result();
}

Result CVideoProperties::SetReferenceWhiteLevel(float level) {
  referenceWhite_ = level;
  return Result();
}

Result CVideoProperties::SetReferenceLevels(Range<float> levels) {
  // The black level is the one that can be refused; it goes first so that a
  // refusal leaves both unchanged.
  Result r = SetReferenceBlackLevel(levels.head);
  return r.Failed() ? r : SetReferenceWhiteLevel(levels.tail);
}

int CVideoProperties::GetAlphaChannel() const {
  return Prefer(configuration_, &Configuration::alphaChannel, alphaChannel_);
}

Result CVideoProperties::SetAlphaChannel(int alpha) {
  if (alpha < 0 || alpha >= 3) return ResultArgumentOutOfRange();
  alphaChannel_ = alpha;
  return Result();
}

// Derived values ------------------------------------------------------------

Rational<int> CVideoProperties::GetDisplayAspectRatio() const {
  Rational<int> par = GetPixelAspectRatio();
  long long w = (static_cast<long long>(GetWidth()) - cleanAperture_.left - cleanAperture_.right) * par.numerator;
  long long h = (static_cast<long long>(GetHeight()) - cleanAperture_.top - cleanAperture_.bottom) * par.denominator;
  if (w <= 0 || h <= 0) return Rational<int>(0, 0);
  long long g = std::gcd(w, h);
  return Rational<int>(static_cast<int>(w / g), static_cast<int>(h / g));
}

ColorSpace CVideoProperties::GetDefaultColorSpace(int height) {
  switch (height) {
    case 240:
    case 480:
    case 486:
    case 512:
      return ColorSpace{6, 6, 6};
    case 288:
    case 576:
    case 608:
      return ColorSpace{5, 5, 6};
    case 360:
    case 540:
    case 720:
    case 1080:
    case 1088:
      return ColorSpace{1, 1, 1};
    case 1716:
    case 2160:
      return ColorSpace{9, 9, 14};
    default:
      return ColorSpace{2, 2, 2};
  }
}

// Thresholds on the height rather than the table of the static form: the
// two rules deliberately differ.
ColorSpace CVideoProperties::GetDefaultColorSpace() const {
  ColorSpace colour = GetColorSpace();
  int h = configuration_ ? configuration_->height : 0;
  unsigned char primaries = h < 526 ? 6 : h < 626 ? 5 : h < 1081 ? 1 : 9;
  unsigned char transfer = h < 626 ? 6 : h < 1081 ? 1 : 14;
  if (colour.primaries == Unspecified) colour.primaries = primaries;
  if (colour.matrix == Unspecified) colour.matrix = primaries;
  if (colour.transfer == Unspecified) colour.transfer = transfer;
  return colour;
}

int CVideoProperties::GetSampleLength(int stride) const {
  const PlaneLayout* layout = PlaneLayout::Find(GetFormat());
  if (!layout) return 0;
  long long total = 0;
  if (stride <= 0) {
    total = layout->GetSampleLength(GetWidth(), GetHeight());
  } else {
    // A given stride is the first plane's; the others keep their proportion.
    const PlaneLayout::Plane& first = layout->planes[0];
    for (int i = 0; i < layout->planeCount; ++i) {
      const PlaneLayout::Plane& p = layout->planes[i];
      long long scaled = static_cast<long long>(stride) * p.blockBytes * first.blockWidth;
      long long divisor = static_cast<long long>(p.blockWidth) * first.blockBytes;
      long long planeStride = (scaled + divisor - 1) / divisor;
      if (planeStride > 0x7FFFFFFF) return 0;
      total += planeStride * layout->GetPlaneHeight(i, GetHeight());
      if (total > 0x7FFFFFFF) return 0;
    }
  }
  return total > 0x7FFFFFFF ? 0 : static_cast<int>(total);
}

int CVideoProperties::GetStride(int plane) const {
  const PlaneLayout* layout = PlaneLayout::Find(GetFormat());
  return layout ? layout->GetStride(plane, GetWidth()) : 0;
}

// Binary form ---------------------------------------------------------------

Result CVideoProperties::WriteFields(CBinaryWriter* writer) const {
  const int values[] = {fieldOrder_,         width_,          height_,          pixelAspectRatio_.numerator,
                        pixelAspectRatio_.denominator, cleanAperture_.left, cleanAperture_.right, cleanAperture_.top,
                        cleanAperture_.bottom, orientation_, subsampling_,     bitDepth_};
  for (int value : values) {
    Result r = writer->WriteInt32(value);
    if (r.Failed()) return r;
  }
  Result r = writer->WriteByte(matrixCoefficients_);
  if (r.Succeeded()) r = writer->WriteByte(colorPrimaries_);
  if (r.Succeeded()) r = writer->WriteByte(transferCharacteristics_);
  if (r.Succeeded()) r = writer->WriteInt32(videoRange_);
  if (r.Succeeded()) r = writer->WriteFloat32(referenceBlack_);
  if (r.Succeeded()) r = writer->WriteFloat32(referenceWhite_);
  return r;
}

Result CVideoProperties::ReadFields(CBinaryReader* reader, int size) {
  if (size != 63) return ResultFormatError("video description size %d", size + 40);
  int values[12] = {};
  for (int& value : values) {
    Result r = reader->ReadInt32(&value);
    if (r.Failed()) return r;
  }
  unsigned char matrix = 0, primaries = 0, transfer = 0;
  int range = 0;
  float black = 0, white = 0;
  Result r = reader->ReadByte(&matrix);
  if (r.Succeeded()) r = reader->ReadByte(&primaries);
  if (r.Succeeded()) r = reader->ReadByte(&transfer);
  if (r.Succeeded()) r = reader->ReadInt32(&range);
  if (r.Succeeded()) r = reader->ReadFloat32(&black);
  if (r.Succeeded()) r = reader->ReadFloat32(&white);
  if (r.Failed()) return r;
  fieldOrder_ = values[0];
  width_ = values[1];
  height_ = values[2];
  pixelAspectRatio_ = Rational<int>(values[3], values[4]);
  cleanAperture_ = Rectangle<int>(values[5], values[6], values[7], values[8]);
  orientation_ = values[9];
  subsampling_ = values[10];
  bitDepth_ = values[11];
  matrixCoefficients_ = matrix;
  colorPrimaries_ = primaries;
  transferCharacteristics_ = transfer;
  videoRange_ = range;
  referenceBlack_ = black;
  referenceWhite_ = white;
  // Neither is part of the binary form.
  chromaSiting_ = 0;
  alphaChannel_ = 0;
  return Result();
}

// Identity ------------------------------------------------------------------

void CVideoProperties::HashFields(unsigned int& hash) const {
  Hash(hash, static_cast<unsigned int>(GetWidth()));
  Hash(hash, static_cast<unsigned int>(GetHeight()));
  Rational<int> par = Reduce(GetPixelAspectRatio());
  Hash(hash, static_cast<unsigned int>(par.numerator));
  Hash(hash, static_cast<unsigned int>(par.denominator));
  Hash(hash, static_cast<unsigned int>(GetSubsampling()));
  Hash(hash, GetMatrixCoefficients());
  Hash(hash, GetColorPrimaries());
  Hash(hash, GetTransferCharacteristics());
  unsigned int bits = 0;
  std::memcpy(&bits, &referenceBlack_, sizeof bits);
  Hash(hash, bits);
  std::memcpy(&bits, &referenceWhite_, sizeof bits);
  Hash(hash, bits);
  Hash(hash, static_cast<unsigned int>(GetVideoRange()));
  Hash(hash, static_cast<unsigned int>(GetFieldOrder()));
  Rational<long long> rate = GetFrameRate();
  long long g = rate.numerator && rate.denominator ? std::gcd(rate.numerator, rate.denominator) : 0;
  Hash(hash, static_cast<unsigned int>(g ? rate.numerator / g : 0));
  Hash(hash, static_cast<unsigned int>(g ? rate.denominator / g : 0));
}

bool CVideoProperties::SameFields(const CMediaProperties* base) const {
  auto* other = static_cast<const CVideoProperties*>(base);
  return CMediaProperties::SameFields(other) && GetFieldOrder() == other->GetFieldOrder() &&
         GetWidth() == other->GetWidth() && GetHeight() == other->GetHeight() &&
         GetPixelAspectRatio() == other->GetPixelAspectRatio() && cleanAperture_ == other->cleanAperture_ &&
         orientation_ == other->orientation_ && GetSubsampling() == other->GetSubsampling() &&
         chromaSiting_ == other->chromaSiting_ && GetBitDepth() == other->GetBitDepth() &&
         GetColorSpace() == other->GetColorSpace() && GetVideoRange() == other->GetVideoRange() &&
         SameBits(referenceBlack_, other->referenceBlack_) && SameBits(referenceWhite_, other->referenceWhite_) &&
         GetAlphaChannel() == other->GetAlphaChannel();
}

// Descriptive form ----------------------------------------------------------

void CVideoProperties::Describe(CProperties* bag) const {
  static const char* const kFieldOrders[] = {"unknown", "progressive", "upper", "lower"};
  static const char* const kAlpha[] = {"unknown", "present", "not present"};
  static const char* const kSiting[] = {"unknown",           "cosited",           "interstitial",
                                        "vertical_midpoint", "horizontal_midpoint", "line_alternating"};
  bag->SetProperty("width", GetWidth());
  bag->SetProperty("height", GetHeight());
  RObject<CProperties> aperture(new CProperties());
  aperture->SetProperty("left", cleanAperture_.left);
  aperture->SetProperty("right", cleanAperture_.right);
  aperture->SetProperty("top", cleanAperture_.top);
  aperture->SetProperty("bottom", cleanAperture_.bottom);
  bag->SetProperty("clean_aperture", aperture.Get());
  RObject<CString> apertureText(
      CString::WithFormat("%lldx%lld", static_cast<long long>(GetWidth()) - cleanAperture_.left - cleanAperture_.right,
                          static_cast<long long>(GetHeight()) - cleanAperture_.top - cleanAperture_.bottom));
  bag->SetPropertyDescription("clean_aperture", apertureText.Get());
  RObject<CProperties> orientation(new CProperties());
  orientation->SetProperty("rotation", (orientation_ & 3) * 90);
  orientation->SetProperty("mirrored", (orientation_ & 4) != 0);
  bag->SetProperty("orientation", orientation.Get());
  int order = GetFieldOrder();
  bag->SetProperty("field_order", order >= 0 && order <= 3 ? kFieldOrders[order] : "unknown");
  Rational<int> par = GetPixelAspectRatio();
  RObject<CString> parText(CString::WithFormat("%d:%d", par.numerator, par.denominator));
  bag->SetProperty("pixel_aspect_ratio", parText.Get());
  bag->SetPropertyDescription("pixel_aspect_ratio", parText.Get());
  bag->SetProperty("bit_depth", GetBitDepth());
  int alpha = GetAlphaChannel();
  bag->SetProperty("alpha_channel", alpha >= 0 && alpha <= 2 ? kAlpha[alpha] : "unknown");
  int sub = GetSubsampling();
  if (sub) {
    int h = sub >> 4, v = sub & 15;
    RObject<CProperties> subsampling(new CProperties());
    subsampling->SetProperty("horizontal", h);
    subsampling->SetProperty("vertical", v);
    bag->SetProperty("chroma_subsampling", subsampling.Get());
    // J:a:b notation over a four-pixel row: 0x22 is 4:2:0, 0x21 4:2:2.
    int a = h ? 4 / h : 0;
    RObject<CString> text(CString::WithFormat("%d:%d:%d", 4, a, v == 1 ? a : 0));
    bag->SetPropertyDescription("chroma_subsampling", text.Get());
  }
  bag->SetProperty("chroma_location", kSiting[chromaSiting_ >= 0 && chromaSiting_ < 6 ? chromaSiting_ : 0]);
  if (GetColorPrimaries() != Unspecified) bag->SetProperty("color_primaries", static_cast<int>(GetColorPrimaries()));
  if (GetTransferCharacteristics() != Unspecified)
    bag->SetProperty("transfer_characteristics", static_cast<int>(GetTransferCharacteristics()));
  if (GetMatrixCoefficients() != Unspecified)
    bag->SetProperty("matrix_coefficients", static_cast<int>(GetMatrixCoefficients()));
  switch (GetVideoRange()) {
    case 1:
      bag->SetProperty("video_range", "narrow");
      break;
    case 2:
      bag->SetProperty("video_range", "full");
      break;
    case 3:
      bag->SetProperty("video_range", "sony");
      break;
    case 255:
      bag->SetProperty("video_range", "extension");
      break;
    default:
      break;
  }
  bag->SetProperty("reference_black", referenceBlack_);
  RObject<CString> black(CString::WithFormat("%.2f%%", static_cast<double>(referenceBlack_)));
  bag->SetPropertyDescription("reference_black", black.Get());
  bag->SetProperty("reference_white", referenceWhite_);
  RObject<CString> white(CString::WithFormat("%.2f%%", static_cast<double>(referenceWhite_)));
  bag->SetPropertyDescription("reference_white", white.Get());
}

}  // namespace Corvane::Mox
