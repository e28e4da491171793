#include "System/Media/MediaProperties.h"

#include <climits>
#include <cstring>

#include "System/FourString.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Formats/AudioFormat.h"
#include "System/Media/Formats/SubtitleFormat.h"
#include "System/Media/Formats/VideoFormat.h"
#include "System/Media/PropertiesExtension.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Text.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

CMediaProperties::CMediaProperties() : CMediaProperties(TypeCode, nullptr) {}

CMediaProperties::CMediaProperties(unsigned int type, const CMediaProperties* source)
    : CProperties(type, source),
      format_(source ? source->format_ : 0),
      timeScale_(source ? source->timeScale_ : 0),
      sampleDuration_(source ? source->sampleDuration_ : 0),
      duration_(source ? source->duration_ : 0),
      bitRate_(source ? source->bitRate_ : 0),
      language_(source ? source->language_ : 0),
      region_(source ? source->region_ : 0),
      extensions_(nullptr) {
  if (source && source->extensions_) {
    extensions_ = new CList<CMediaPropertiesExtension>();
    extensions_->AddRange(source->extensions_);
  }
}

CMediaProperties::~CMediaProperties() {
  if (extensions_) extensions_->Release();
}

bool CMediaProperties::IsType(unsigned int type) const { return type == TypeCode || CProperties::IsType(type); }

CMediaProperties* CMediaProperties::Clone(const CMediaProperties* source) {
  if (!source) return nullptr;
  switch (source->GetType()) {
    case CVideoProperties::TypeCode:
      return new CVideoProperties(static_cast<const CVideoProperties*>(source));
    case CAudioProperties::TypeCode:
      return new CAudioProperties(static_cast<const CAudioProperties*>(source));
    case CSubtitleProperties::TypeCode:
      return new CSubtitleProperties(static_cast<const CSubtitleProperties*>(source));
    default:
      return new CMediaProperties(source->GetType(), source);
  }
}

// Setters ------------------------------------------------------------------

Result CMediaProperties::SetFormat(unsigned int format) {
  format_ = format;
  return Result();
}

Result CMediaProperties::SetTimeScale(long long timeScale) {
  if (timeScale < 0) return ResultArgumentOutOfRange();
  timeScale_ = timeScale;
  return Result();
}

Result CMediaProperties::SetSampleDuration(long long sampleDuration) {
  if (sampleDuration <= 0) return ResultArgumentOutOfRange();
  sampleDuration_ = sampleDuration;
  return Result();
}

Rational<long long> CMediaProperties::GetMediaSampleRate() const {
  return Rational<long long>(GetTimeScale(), GetSampleDuration());
}

Result CMediaProperties::SetMediaSampleRate(Rational<long long> rate) {
  if (rate.numerator < 0 || rate.denominator <= 0) return ResultArgumentOutOfRange();
  timeScale_ = rate.numerator;
  sampleDuration_ = rate.denominator;
  return Result();
}

Result CMediaProperties::SetDuration(long long duration) {
  duration_ = duration;
  return Result();
}

Result CMediaProperties::SetBitRate(long long bitRate) {
  bitRate_ = bitRate;
  return Result();
}

Result CMediaProperties::SetLanguage(unsigned short language) {
  language_ = language;
  return Result();
}

void CMediaProperties::GetLanguage(char& a, char& b, char& c) const { UnpackLanguageCode(language_, a, b, c); }

Result CMediaProperties::SetLanguage(char a, char b, char c) { return SetLanguage(PackLanguageCode(a, b, c)); }

Result CMediaProperties::SetRegion(unsigned short region) {
  region_ = region;
  return Result();
}

void CMediaProperties::GetRegion(char& a, char& b, char& c) const { UnpackRegionCode(region_, a, b, c); }

Result CMediaProperties::SetRegion(char a, char b, char c) { return SetRegion(PackRegionCode(a, b, c)); }

unsigned short CMediaProperties::PackLanguageCode(char a, char b, char c) {
  return static_cast<unsigned short>(((a & 31) << 10) | ((b & 31) << 5) | (c & 31));
}

void CMediaProperties::UnpackLanguageCode(unsigned short code, char& a, char& b, char& c) {
  a = static_cast<char>(((code >> 10) & 31) | 0x60);
  b = static_cast<char>(((code >> 5) & 31) | 0x60);
  c = static_cast<char>((code & 31) | 0x60);
}

// Extensions ---------------------------------------------------------------

int CMediaProperties::GetExtensionCount() const { return extensions_ ? extensions_->GetCount() : 0; }

CMediaPropertiesExtension* CMediaProperties::GetExtension(unsigned int tag) const {
  if (!extensions_) return nullptr;
  for (CMediaPropertiesExtension* extension : *extensions_) {
    if (extension->GetTag() == tag) {
      extension->Acquire();
      return extension;
    }
  }
  return nullptr;
}

CList<CMediaPropertiesExtension>* CMediaProperties::GetExtensions() const {
  if (extensions_) extensions_->Acquire();
  return extensions_;
}

Result CMediaProperties::AddExtension(CMediaPropertiesExtension* extension) {
  if (!extension) return ResultArgumentNull();
  RemoveExtension(extension->GetTag());
  if (!extensions_) extensions_ = new CList<CMediaPropertiesExtension>();
  return extensions_->Add(extension);
}

bool CMediaProperties::ContainsExtension(unsigned int tag) const {
  RObject<CMediaPropertiesExtension> extension(GetExtension(tag));
  return extension.Get() != nullptr;
}

Result CMediaProperties::RemoveExtension(unsigned int tag) {
  RObject<CMediaPropertiesExtension> extension(GetExtension(tag));
  if (!extension) return ResultFalse();
  return extensions_->RemoveItem(extension.Get());
}

void CMediaProperties::ClearExtensions() {
  if (extensions_) extensions_->Clear();
}

// Identity -----------------------------------------------------------------

void CMediaProperties::Hash(unsigned int& hash, unsigned int value) {
  hash += value;
  hash += hash << 10;
  hash ^= hash >> 6;
}

void CMediaProperties::HashFields(unsigned int& hash) const {
  Hash(hash, static_cast<unsigned int>(GetTimeScale()));
  Hash(hash, static_cast<unsigned int>(GetSampleDuration()));
}

int CMediaProperties::GetHashCode() const {
  unsigned int hash = 0;
  Hash(hash, format_);
  HashFields(hash);
  return static_cast<int>(hash);
}

bool CMediaProperties::SameFields(const CMediaProperties* other) const {
  return format_ == other->format_ && GetTimeScale() == other->GetTimeScale() &&
         GetSampleDuration() == other->GetSampleDuration() && duration_ == other->duration_ &&
         GetBitRate() == other->GetBitRate() && language_ == other->language_ && region_ == other->region_;
}

bool CMediaProperties::Equals(const CObject* other) const {
  if (other == this) return true;
  if (!other || other->GetType() != GetType()) return false;
  return SameFields(static_cast<const CMediaProperties*>(other));
}

// Binary form --------------------------------------------------------------

int CMediaProperties::GetSize() const { return 40; }

Result CMediaProperties::Write(CBinaryWriter* writer) const {
  if (!writer) return ResultArgumentNull();
  Result r = writer->WriteFour(GetType());
  if (r.Succeeded()) r = writer->WriteInt32(GetSize());
  if (r.Succeeded()) r = writer->WriteInt64(timeScale_);
  if (r.Succeeded()) r = writer->WriteInt64(sampleDuration_);
  if (r.Succeeded()) r = writer->WriteInt64(duration_);
  if (r.Succeeded()) r = writer->WriteFour(format_);
  if (r.Succeeded()) r = writer->WriteInt64(bitRate_);
  if (r.Succeeded()) r = writer->WriteInt16(static_cast<short>(language_));
  if (r.Succeeded()) r = writer->WriteInt16(static_cast<short>(region_));
  return r.Failed() ? r : WriteFields(writer);
}

Result CMediaProperties::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  unsigned int tag = 0;
  int size = 0;
  Result r = reader->ReadFour(&tag);
  if (r.Succeeded()) r = reader->ReadInt32(&size);
  if (r.Failed()) return r;
  if (tag != GetType()) return ResultFormatError("description tag '%s'", FourString(tag).GetChars());
  if (size < 40) return ResultFormatError("description size %d", size);
  long long timeScale = 0, sampleDuration = 0, duration = 0, bitRate = 0;
  unsigned int format = 0;
  short language = 0, region = 0;
  r = reader->ReadInt64(&timeScale);
  if (r.Succeeded()) r = reader->ReadInt64(&sampleDuration);
  if (r.Succeeded()) r = reader->ReadInt64(&duration);
  if (r.Succeeded()) r = reader->ReadFour(&format);
  if (r.Succeeded()) r = reader->ReadInt64(&bitRate);
  if (r.Succeeded()) r = reader->ReadInt16(&language);
  if (r.Succeeded()) r = reader->ReadInt16(&region);
  if (r.Failed()) return r;
  // The stored values are taken as written: the binary form carries what a
  // description held, including values its setters would refuse today.
  r = SetFormat(format);
  if (r.Failed()) return r;
  timeScale_ = timeScale;
  sampleDuration_ = sampleDuration;
  duration_ = duration;
  bitRate_ = bitRate;
  language_ = static_cast<unsigned short>(language);
  region_ = static_cast<unsigned short>(region);
  return ReadFields(reader, size - 40);
}

Result CMediaProperties::ReadProperties(CBinaryReader* reader, CMediaProperties*& properties) {
  properties = nullptr;
  if (!reader) return ResultArgumentNull();
  // Peek at the tag, then let the description read itself from the start.
  long long position = reader->GetPosition();
  unsigned int tag = 0;
  Result r = reader->ReadFour(&tag);
  if (r.Failed()) return r;
  RObject<CMediaProperties> description;
  switch (tag) {
    case CVideoProperties::TypeCode:
      description = new CVideoProperties();
      break;
    case CAudioProperties::TypeCode:
      description = new CAudioProperties();
      break;
    case CSubtitleProperties::TypeCode:
      description = new CSubtitleProperties();
      break;
    case TypeCode:
      description = new CMediaProperties();
      break;
    default:
      return ResultFormatError("unknown description tag '%s'", FourString(tag).GetChars());
  }
  r = reader->Seek(position, SeekOrigin::Begin, nullptr);
  if (r.Succeeded()) r = description->Read(reader);
  if (r.Failed()) return r;
  properties = description.Detach();
  return Result();
}

// Descriptive form ---------------------------------------------------------

namespace {

const char* FormatName(unsigned int type, unsigned int format) {
  switch (type) {
    case FourCC("vid "):
      return VideoFormat::GetName(format);
    case FourCC("aud "):
      return AudioFormat::GetName(format);
    case FourCC("sub "):
      return SubtitleFormat::GetName(format);
    default:
      return nullptr;
  }
}

}  // namespace

CProperties* CMediaProperties::GetDescriptiveRepresentation() const {
  RObject<CProperties> bag(new CProperties());
  bag->SetFourProperty("format", format_);
  if (const char* name = FormatName(GetType(), format_)) bag->SetPropertyDescription("format", name);

  RObject<CProperties> rate(new CProperties());
  rate->SetProperty("numerator", GetTimeScale());
  rate->SetProperty("denominator", GetSampleDuration());
  bag->SetProperty("sample_rate", rate.Get());
  double quotient = GetSampleDuration() ? static_cast<double>(GetTimeScale()) / static_cast<double>(GetSampleDuration()) : 0.0;
  RObject<CString> rateText(IsVideo() ? CString::WithFormat("%.3f fps", quotient)
                                      : CString::WithFormat("%.1f kHz", quotient / 1000.0));
  bag->SetPropertyDescription("sample_rate", rateText.Get());

  bag->SetProperty("duration", duration_);
  long long scale = GetTimeScale();
  // Wide arithmetic: a duration near the 64-bit limit must not overflow.
  __int128 wide = scale > 0 ? static_cast<__int128>(duration_) * 1000 / scale : 0;
  long long ms = wide > LLONG_MAX ? LLONG_MAX : wide < LLONG_MIN ? LLONG_MIN : static_cast<long long>(wide);
  RObject<CString> durationText(MillisecondsToTime(ms));
  bag->SetPropertyDescription("duration", durationText.Get());

  long long bitRate = GetBitRate();
  bag->SetProperty("bit_rate", bitRate);
  RObject<CString> bitRateText;
  if (bitRate >= 1000000000LL)
    bitRateText = CString::WithFormat("%.3f Gbit/s", static_cast<double>(bitRate) / 1e9);
  else if (bitRate >= 1000000LL)
    bitRateText = CString::WithFormat("%.3f Mbit/s", static_cast<double>(bitRate) / 1e6);
  else if (bitRate >= 1000LL)
    bitRateText = CString::WithFormat(IsVideo() ? "%.3f Kbit/s" : "%.3f kbit/s", static_cast<double>(bitRate) / 1e3);
  else
    bitRateText = CString::WithFormat("%lld bit/s", bitRate);
  bag->SetPropertyDescription("bit_rate", bitRateText.Get());

  char a, b, c;
  if (language_) {
    GetLanguage(a, b, c);
    RObject<CString> language(CString::WithFormat("%c%c%c", a, b, c));
    bag->SetProperty("language", language.Get());
  }
  if (region_) {
    GetRegion(a, b, c);
    RObject<CString> region(CString::WithFormat("%c%c%c", a, b, c));
    bag->SetProperty("region", region.Get());
  }

  Describe(bag.Get());

  RObject<CProperties> properties(new CProperties(this));
  bag->SetProperty("properties", properties.Get());
  if (extensions_ && extensions_->GetCount() > 0) {
    RObject<CVariantArray> list(new CVariantArray(extensions_->GetCount()));
    int index = 0;
    for (CMediaPropertiesExtension* extension : *extensions_) {
      RObject<CProperties> entry(extension->GetDescriptiveRepresentation());
      RObject<CVariant> value(new CVariant(entry.Get()));
      list->Set(index++, value.Get());
    }
    bag->SetProperty("extension", list.Get());
  }
  return bag.Detach();
}

CString* CMediaProperties::MillisecondsToTime(long long milliseconds) {
  return CString::WithFormat("%02lld:%02lld:%02lld.%03lld", milliseconds / 3600000, milliseconds / 60000 % 60,
                             milliseconds / 1000 % 60, milliseconds % 1000);
}

}  // namespace Corvane::Mox
