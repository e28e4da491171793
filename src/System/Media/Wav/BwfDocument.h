#pragma once
// CBwfDocument: the iXML document ("BWFXML") of a Broadcast Wave file, as far
// as this library uses it: the time stamp of the first sample (samples since
// midnight at the time-stamp sample rate) and the time-code rate and
// counting mode, from which the start time code follows.

#include "System/Media/TimeCode/TimeCode.h"
#include "System/Rational.h"
#include "System/Text.h"
#include "System/Xml/XmlSerialization.h"

namespace Corvane::Mox {

class CBwfDocument : public CXmlSerialization {
 public:
  static constexpr unsigned int TypeCode = FourCC("bwfx");

  CBwfDocument();

  // Reads the time-stamp elements, looked for under "SPEED" and then
  // directly under the root; fails when the root is not "BWFXML".
  Result Parse(CXmlElement* root) override;
  // Writes the root "BWFXML" with a "SPEED" element holding the values.
  Result Write(CXmlDocument* document) override;

  // The start time code; ResultFormatError when the document has no usable
  // time-code rate or time-stamp sample rate.
  Result GetTimeCode(CTimeCode& timeCode) const;
  Rational<long long> GetTimeCodeRate() const { return timeCodeRate_; }
  bool IsDropFrame() const { return dropFrame_; }
  long long GetTimestampSampleRate() const { return sampleRate_; }
  unsigned long long GetSamplesSinceMidnight() const { return samplesSinceMidnight_; }
  // Acquired; null when absent.
  CString* GetSpeed() const;

  void SetTimeCodeRate(Rational<long long> rate) { timeCodeRate_ = rate; }
  void SetDropFrame(bool dropFrame) { dropFrame_ = dropFrame; }
  void SetTimestampSampleRate(long long rate) { sampleRate_ = rate; }
  void SetSamplesSinceMidnight(unsigned long long samples) { samplesSinceMidnight_ = samples; }

  // "n/d" with " ", "/" or ":" between the numbers, or a whole number;
  // false for anything else.
  static bool ParseRate(const char* text, Rational<long long>& rate);

 private:
  RObject<CString> speed_;
  Rational<long long> timeCodeRate_;
  bool dropFrame_;
  long long sampleRate_;
  unsigned long long samplesSinceMidnight_;
};

}  // namespace Corvane::Mox
