#pragma once
// CWaveBroadcastExtension ("bext"): the Broadcast Wave description of a file:
// fixed-width text fields, the time reference (samples since midnight), the
// UMID, loudness values in hundredths and the free-form coding history that
// fills the rest of the chunk.

#include "System/Media/Wav/WaveChunk.h"

namespace Corvane::Mox {

class CProperties;
class CString;

class CWaveBroadcastExtension : public CWaveChunk {
 public:
  static constexpr unsigned int TypeCode = FourCC("bext");
  // The fields before the coding history.
  static constexpr unsigned int FixedSize = 602;
  static constexpr int DescriptionSize = 256;
  static constexpr int OriginatorSize = 32;
  static constexpr int OriginatorReferenceSize = 32;
  static constexpr int OriginationDateSize = 10;
  static constexpr int OriginationTimeSize = 8;
  static constexpr int UmidSize = 64;

  CWaveBroadcastExtension();
  CWaveBroadcastExtension(long long position, unsigned int size);
  ~CWaveBroadcastExtension() override;

  // Text fields: the bytes up to the first zero, as a new string (Latin-1
  // bytes become their characters). Setting truncates to the field width
  // and fills the rest with zeros; null clears the field.
  CString* GetDescription() const;
  Result SetDescription(CString* text);
  Result SetDescription(CByteArray* bytes);
  CString* GetOriginator() const;
  Result SetOriginator(CString* text);
  Result SetOriginator(CByteArray* bytes);
  CString* GetOriginatorReference() const;
  Result SetOriginatorReference(CString* text);
  Result SetOriginatorReference(CByteArray* bytes);
  CString* GetOriginationDate() const;
  Result SetOriginationDate(CString* text);
  Result SetOriginationDate(CByteArray* bytes);
  CString* GetOriginationTime() const;
  Result SetOriginationTime(CString* text);
  Result SetOriginationTime(CByteArray* bytes);

  unsigned long long GetTimeReference() const { return timeReference_; }
  void SetTimeReference(unsigned long long samples) { timeReference_ = samples; }
  unsigned short GetVersion() const { return version_; }
  void SetVersion(unsigned short version) { version_ = version; }
  // The 64 UMID bytes, acquired.
  CByteArray* GetUmid() const;
  Result SetUmid(CByteArray* bytes);
  short GetLoudnessValue() const { return loudness_[0]; }
  short GetLoudnessRange() const { return loudness_[1]; }
  short GetMaxTruePeakLevel() const { return loudness_[2]; }
  short GetMaxMomentaryLoudness() const { return loudness_[3]; }
  short GetMaxShortTermLoudness() const { return loudness_[4]; }
  void SetLoudnessValue(short value) { loudness_[0] = value; }
  void SetLoudnessRange(short value) { loudness_[1] = value; }
  void SetMaxTruePeakLevel(short value) { loudness_[2] = value; }
  void SetMaxMomentaryLoudness(short value) { loudness_[3] = value; }
  void SetMaxShortTermLoudness(short value) { loudness_[4] = value; }
  // The coding history bytes, acquired; null when absent.
  CByteArray* GetCodingHistory() const;
  // Acquires bytes (null removes the history).
  void SetCodingHistory(CByteArray* bytes);
  Result SetCodingHistory(CString* text);

  // 602, plus the coding history rounded up to even.
  unsigned int GetSize() const override;
  Result Read(CBinaryReader* reader) override;
  Result Write(CBinaryWriter* writer) override;
  // The fields as properties ("description" .. "max_short_term_loudness",
  // "coding_history" with line breaks shown as "\r" and "\n").
  Result GetProperties(CProperties* bag) const;

 private:
  unsigned char description_[DescriptionSize];
  unsigned char originator_[OriginatorSize];
  unsigned char originatorReference_[OriginatorReferenceSize];
  unsigned char originationDate_[OriginationDateSize];
  unsigned char originationTime_[OriginationTimeSize];
  unsigned long long timeReference_;
  unsigned short version_;
  unsigned char umid_[UmidSize];
  short loudness_[5];
  CByteArray* codingHistory_;
};

}  // namespace Corvane::Mox
