#pragma once
// CMediaProperties ("medi"): the description of one stream: its format code,
// its time scale and sample duration (together the media sample rate), its
// duration, bit rate, language and region, a property bag for further facts
// and typed extensions keyed by tag. Video, audio and subtitle descriptions
// derive from it. Setters validate and leave the description unchanged when
// they refuse a value.

#include "System/Collections/List.h"
#include "System/Media/PropertiesDescription.h"
#include "System/Properties.h"
#include "System/Rational.h"

namespace Corvane::Mox {

class CBinaryReader;
class CBinaryWriter;
class CMediaPropertiesExtension;
class CString;

class CMediaProperties : public CProperties, public IPropertiesDescription {
 public:
  static constexpr unsigned int TypeCode = FourCC("medi");

  CMediaProperties();
  ~CMediaProperties() override;

  bool IsType(unsigned int type) const override;
  // Same class and the same fixed fields (as the getters report them); the
  // property bag and the extensions are not compared.
  bool Equals(const CObject* other) const override;
  // A one-at-a-time hash over the fields that identify equivalent media.
  int GetHashCode() const override;
  // A new description of the same class with the same fields, properties and
  // (shared) extensions; null in, null out.
  static CMediaProperties* Clone(const CMediaProperties* source);

  unsigned int GetFormat() const { return format_; }
  virtual Result SetFormat(unsigned int format);
  virtual long long GetTimeScale() const { return timeScale_; }
  // Refuses a negative value.
  Result SetTimeScale(long long timeScale);
  virtual long long GetSampleDuration() const { return sampleDuration_; }
  // Refuses 0 or less.
  Result SetSampleDuration(long long sampleDuration);
  Rational<long long> GetMediaSampleRate() const;
  // Numerator ≥ 0 and denominator > 0.
  Result SetMediaSampleRate(Rational<long long> rate);
  long long GetDuration() const { return duration_; }
  Result SetDuration(long long duration);
  virtual long long GetBitRate() const { return bitRate_; }
  Result SetBitRate(long long bitRate);

  unsigned short GetLanguage() const { return language_; }
  Result SetLanguage(unsigned short language);
  void GetLanguage(char& a, char& b, char& c) const;
  Result SetLanguage(char a, char b, char c);
  unsigned short GetRegion() const { return region_; }
  Result SetRegion(unsigned short region);
  void GetRegion(char& a, char& b, char& c) const;
  Result SetRegion(char a, char b, char c);

  int GetExtensionCount() const;
  // The extension of tag, acquired; null when absent.
  CMediaPropertiesExtension* GetExtension(unsigned int tag) const;
  // The extensions in the order they were added, acquired (null when none).
  CList<CMediaPropertiesExtension>* GetExtensions() const;
  // Replaces an extension of the same tag.
  Result AddExtension(CMediaPropertiesExtension* extension);
  bool ContainsExtension(unsigned int tag) const;
  // ResultFalse when absent.
  Result RemoveExtension(unsigned int tag);
  void ClearExtensions();

  // Bytes of the binary form after the tag and size: 40 here.
  virtual int GetSize() const;
  // The binary form: the class tag, GetSize(), then the fields.
  Result Write(CBinaryWriter* writer) const;
  // Reads the form Write produces; the tag must be this class's.
  Result Read(CBinaryReader* reader);
  // Reads a description of whatever class the tag names.
  static Result ReadProperties(CBinaryReader* reader, CMediaProperties*& properties);

  CProperties* GetDescriptiveRepresentation() const override;

  // ISO 639-2 and ISO 3166 alpha-3 codes packed as three 5-bit letters.
  static unsigned short PackLanguageCode(char a, char b, char c);
  // Each letter comes back lower case (the field OR 0x60).
  static void UnpackLanguageCode(unsigned short code, char& a, char& b, char& c);
  static unsigned short PackRegionCode(char a, char b, char c) { return PackLanguageCode(a, b, c); }
  static void UnpackRegionCode(unsigned short code, char& a, char& b, char& c) { UnpackLanguageCode(code, a, b, c); }
  // Between the ISO 639-2 bibliographic and terminology forms; other codes
  // come back as given.
  static unsigned short ConvertToTerminologyCodeIfBibliographicCode(unsigned short code);
  static unsigned short ConvertToBibliographicCodeIfTerminologyCode(unsigned short code);
  static const char* ConvertToTerminologyCodeIfBibliographicCode(const char* code);
  static const char* ConvertToBibliographicCodeIfTerminologyCode(const char* code);
  // Two letters to the three-letter (bibliographic, or terminology) code;
  // other text comes back as given; null for an unknown two-letter code.
  static const char* ConvertToAlpha3IfAlpha2(const char* code);
  static const char* ConvertToAlpha3_TIfAlpha2(const char* code);
  // Three letters (either form) to ISO 639-1; null when none.
  static const char* ConvertAlpha3ToAlpha2(const char* code);
  // An English language name to ISO 639-1; null when none.
  static const char* ConvertNameToAlpha2(const char* name);
  static const char* ConvertRegionToAlpha3IfAlpha2(const char* code);
  static const char* ConvertRegionAlpha3ToAlpha2(const char* code);
  // "en-GB": the language's ISO 639-1 code and the region's alpha-2 code;
  // null when either has no two-letter code.
  static CString* ConvertToRfc5646(unsigned short language, unsigned short region);
  // "hh:mm:ss.mmm".
  static CString* MillisecondsToTime(long long milliseconds);

 protected:
  CMediaProperties(unsigned int type, const CMediaProperties* source);
  // The subclass's fields after the common ones.
  virtual Result WriteFields(CBinaryWriter*) const { return Result(); }
  virtual Result ReadFields(CBinaryReader*, int) { return Result(); }
  // Adds the subclass's entries to the descriptive bag.
  virtual void Describe(CProperties*) const {}
  // Bit-rate text unit: video prints "Kbit/s", audio "kbit/s".
  virtual bool IsVideo() const { return false; }
  // The hash fields after the format code.
  virtual void HashFields(unsigned int& hash) const;
  virtual bool SameFields(const CMediaProperties* other) const;
  static void Hash(unsigned int& hash, unsigned int value);

 private:
  unsigned int format_;
  long long timeScale_;
  long long sampleDuration_;
  long long duration_;
  long long bitRate_;
  unsigned short language_;
  unsigned short region_;
  CList<CMediaPropertiesExtension>* extensions_;  // made on first add
};

}  // namespace Corvane::Mox
