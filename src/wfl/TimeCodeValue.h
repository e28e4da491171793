#pragma once
// CTimeCodeValue: a WFL time code ("01:00:00:00@25"). Arithmetic works in
// frames: "+" and "-" add or subtract the right operand taken as a frame
// count, comparisons compare frame counts, and "tc.hours" and the other parts
// are read through the dictionary form.

#include "System/Media/TimeCode/TimeCode.h"
#include "wfl/ScalarValues.h"

namespace Corvane::Mox::WFL {

class CTimeCodeValue : public CSymbolValue {
 public:
  static constexpr unsigned int TypeCode = FourCC("tcvl");
  WFL_VALUE_OVERLOADS(CSymbolValue)

  explicit CTimeCodeValue(const CTimeCode& timeCode);

  const CTimeCode& GetTimeCode() const { return timeCode_; }

  CSymbolValue* Clone() override;
  CSymbolValue* TypeOf() const override;
  CSymbolValue* operator++() override;
  CSymbolValue* operator--() override;
  CSymbolValue* operator++(int) override;
  CSymbolValue* operator--(int) override;
  CSymbolValue* operator==(CSymbolValue* right) override;
  CSymbolValue* operator!=(CSymbolValue* right) override;
  CSymbolValue* operator>=(CSymbolValue* right) override;
  CSymbolValue* operator<=(CSymbolValue* right) override;
  CSymbolValue* operator>(CSymbolValue* right) override;
  CSymbolValue* operator<(CSymbolValue* right) override;
  CSymbolValue* operator+(CSymbolValue* right) override;
  CSymbolValue* operator-(CSymbolValue* right) override;
  // NaN (a number) for a zero divisor, else the time code modulo that many frames.
  CSymbolValue* operator%(CSymbolValue* right) override;
  CSymbolValue* operator+=(CSymbolValue* right) override;
  CSymbolValue* operator-=(CSymbolValue* right) override;
  CSymbolValue* operator%=(CSymbolValue* right) override;

  bool ToBoolean() const override { return timeCode_.GetTotalFrames() != 0; }
  double ToDouble() const override { return timeCode_.GetTotalFrames(); }
  long long ToInt64() const override { return timeCode_.GetTotalFrames(); }
  CTimeCode ToTimeCode() const override { return timeCode_; }
  // A new dictionary: hours, minutes, seconds, frames, dropFrame, duration, modulus.
  CSymbolDictionary* ToDictionary() const override;
  // Drop-frame time codes print ";" before the frames.
  CString* ToString() const override;

 private:
  // The right operand as a frame count that fits a time code.
  static int Frames(CSymbolValue* right);

  CTimeCode timeCode_;
};

}  // namespace Corvane::Mox::WFL
