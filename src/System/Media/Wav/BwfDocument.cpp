#include "System/Media/Wav/BwfDocument.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"
#include "System/Xml/XmlText.h"

namespace Corvane::Mox {

namespace {

// The text of the first element of that name under SPEED, else under the
// root; null when neither has one.
CString* FindText(CXmlElement* root, CXmlElement* speed, const char* name) {
  RObject<CXmlElement> element(speed ? speed->GetChildElement(name) : nullptr);
  if (!element) element = root->GetChildElement(name);
  return element ? element->GetText() : nullptr;
}

bool ParseUnsigned(CString* text, unsigned long long& value) {
  if (!text) return false;
  char* end = nullptr;
  value = std::strtoull(text->GetChars(), &end, 10);
  return end != text->GetChars();
}

Result AddElement(CXmlNode* parent, const char* name, const char* text) {
  RObject<CXmlElement> element(new CXmlElement(name));
  Result result = parent->AddChildElement(element.Get());
  if (result.Failed()) return result;
  RObject<CString> value(CString::WithString(text));
  RObject<CXmlText> node(element->CreateText(value.Get()));
  return element->AddChildNode(node.Get());
}

}  // namespace

CBwfDocument::CBwfDocument()
    : CXmlSerialization(TypeCode), timeCodeRate_(0, 1), dropFrame_(false), sampleRate_(0), samplesSinceMidnight_(0) {}

CString* CBwfDocument::GetSpeed() const {
  CString* speed = speed_.Get();
  if (speed) speed->Acquire();
  return speed;
}

bool CBwfDocument::ParseRate(const char* text, Rational<long long>& rate) {
  if (!text) return false;
  char* end = nullptr;
  const long long numerator = std::strtoll(text, &end, 10);
  if (end == text || numerator <= 0) return false;
  const char* separator = end;
  while (*end == ' ') ++end;
  if (*end == '\0') {
    rate = Rational<long long>(numerator, 1);
    return true;
  }
  // "/" or ":" between the numbers, or the spaces alone.
  if (*end == '/' || *end == ':') {
    ++end;
  } else if (end == separator) {
    return false;
  }
  const char* denominatorText = end;
  const long long denominator = std::strtoll(denominatorText, &end, 10);
  if (end == denominatorText || denominator <= 0) return false;
  rate = Rational<long long>(numerator, denominator);
  return true;
}

Result CBwfDocument::Parse(CXmlElement* root) {
  if (!root) return ResultArgumentNull();
  RObject<CString> name(root->GetLocalName());
  if (!name || std::strcmp(name->GetChars(), "BWFXML") != 0) return ResultFormatError("not a BWFXML document");
  RObject<CXmlElement> speed(root->GetChildElement("SPEED"));
  speed_ = speed ? speed->GetText() : nullptr;
  RObject<CString> flag(FindText(root, speed.Get(), "TIMECODE_FLAG"));
  dropFrame_ = flag && std::strstr(flag->GetChars(), "NDF") == nullptr && std::strstr(flag->GetChars(), "DF") != nullptr;
  RObject<CString> rate(FindText(root, speed.Get(), "TIMECODE_RATE"));
  if (!rate || !ParseRate(rate->GetChars(), timeCodeRate_)) timeCodeRate_ = Rational<long long>(0, 1);
  RObject<CString> sampleRate(FindText(root, speed.Get(), "TIMESTAMP_SAMPLE_RATE"));
  unsigned long long value = 0;
  sampleRate_ = ParseUnsigned(sampleRate.Get(), value) ? static_cast<long long>(value) : 0;
  RObject<CString> high(FindText(root, speed.Get(), "TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI"));
  RObject<CString> low(FindText(root, speed.Get(), "TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO"));
  unsigned long long highValue = 0;
  unsigned long long lowValue = 0;
  ParseUnsigned(high.Get(), highValue);
  ParseUnsigned(low.Get(), lowValue);
  samplesSinceMidnight_ = ((highValue & 0xFFFFFFFFull) << 32) | (lowValue & 0xFFFFFFFFull);
  return Result();
}

Result CBwfDocument::GetTimeCode(CTimeCode& timeCode) const {
  if (timeCodeRate_.numerator <= 0 || timeCodeRate_.denominator <= 0 || sampleRate_ <= 0)
    return ResultFormatError("no time-code rate or time-stamp sample rate");
  // Whole frames elapsed at the first sample; long double keeps the product
  // of a day's samples and a rate exact enough.
  const long double frames = static_cast<long double>(samplesSinceMidnight_) * timeCodeRate_.numerator /
                             (static_cast<long double>(sampleRate_) * timeCodeRate_.denominator);
  if (frames >= 2147483647.0L) return ResultFormatError("time stamp beyond the time-code range");
  timeCode = CTimeCode(timeCodeRate_.numerator, timeCodeRate_.denominator, dropFrame_);
  timeCode.FromFrames(static_cast<int>(frames));
  return Result();
}

Result CBwfDocument::Write(CXmlDocument* document) {
  if (!document) return ResultArgumentNull();
  RObject<CXmlElement> root(new CXmlElement("BWFXML"));
  Result result = document->AddChildElement(root.Get());
  if (result.Failed()) return result;
  RObject<CXmlElement> speed(new CXmlElement("SPEED"));
  result = root->AddChildElement(speed.Get());
  char text[64];
  std::snprintf(text, sizeof(text), "%lld/%lld", timeCodeRate_.numerator, timeCodeRate_.denominator);
  if (result.Succeeded()) result = AddElement(speed.Get(), "TIMECODE_RATE", text);
  if (result.Succeeded()) result = AddElement(speed.Get(), "TIMECODE_FLAG", dropFrame_ ? "DF" : "NDF");
  std::snprintf(text, sizeof(text), "%lld", sampleRate_);
  if (result.Succeeded()) result = AddElement(speed.Get(), "TIMESTAMP_SAMPLE_RATE", text);
  std::snprintf(text, sizeof(text), "%llu", samplesSinceMidnight_ >> 32);
  if (result.Succeeded()) result = AddElement(speed.Get(), "TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_HI", text);
  std::snprintf(text, sizeof(text), "%llu", samplesSinceMidnight_ & 0xFFFFFFFFull);
  if (result.Succeeded()) result = AddElement(speed.Get(), "TIMESTAMP_SAMPLES_SINCE_MIDNIGHT_LO", text);
  return result;
}

}  // namespace Corvane::Mox
