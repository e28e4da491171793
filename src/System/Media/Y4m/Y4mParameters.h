#pragma once
// The YUV4MPEG2 header parameters by letter: W width, H height, F frame
// rate, A pixel aspect ratio, I interlacing, C colour space, X comment.

#include "System/Media/Y4m/Y4mParameter.h"
#include "System/Media/Y4m/Y4mTypes.h"
#include "System/Rational.h"

namespace Corvane::Mox {

class CString;

// A parameter whose value is one decimal number.
class CY4mNumberParameter : public CY4mParameter {
 public:
  CY4mNumberParameter(unsigned char identifier, long long value) : CY4mParameter(identifier), value_(value) {}
  Result Read(CBinaryReader* reader, unsigned char& last) override;
  Result Write(CBinaryWriter* writer) const override;

 protected:
  long long value_;
};

class CY4mFrameWidthParameter : public CY4mNumberParameter {
 public:
  explicit CY4mFrameWidthParameter(long long width = 0) : CY4mNumberParameter('W', width) {}
  long long GetWidth() const { return value_; }
  void SetWidth(long long width) { value_ = width; }
};

class CY4mFrameHeightParameter : public CY4mNumberParameter {
 public:
  explicit CY4mFrameHeightParameter(long long height = 0) : CY4mNumberParameter('H', height) {}
  long long GetHeight() const { return value_; }
  void SetHeight(long long height) { value_ = height; }
};

// A parameter whose value is "numerator:denominator".
class CY4mRatioParameter : public CY4mParameter {
 public:
  CY4mRatioParameter(unsigned char identifier, Rational<int> value) : CY4mParameter(identifier), value_(value) {}
  Result Read(CBinaryReader* reader, unsigned char& last) override;
  Result Write(CBinaryWriter* writer) const override;
  Rational<int> GetValue() const { return value_; }
  void SetValue(Rational<int> value) { value_ = value; }

 private:
  Rational<int> value_;
};

class CY4mFrameRateParameter : public CY4mRatioParameter {
 public:
  explicit CY4mFrameRateParameter(Rational<int> rate = Rational<int>(0, 0)) : CY4mRatioParameter('F', rate) {}
};

class CY4mPixelAspectRatioParameter : public CY4mRatioParameter {
 public:
  explicit CY4mPixelAspectRatioParameter(Rational<int> ratio = Rational<int>(0, 0)) : CY4mRatioParameter('A', ratio) {}
};

class CY4mInterlacingModeParameter : public CY4mParameter {
 public:
  explicit CY4mInterlacingModeParameter(Y4mInterlacingMode mode = Y4mInterlacingMode::Progressive)
      : CY4mParameter('I'), mode_(mode) {}
  Result Read(CBinaryReader* reader, unsigned char& last) override;
  Result Write(CBinaryWriter* writer) const override;
  Y4mInterlacingMode GetMode() const { return mode_; }

 private:
  Y4mInterlacingMode mode_;
};

class CY4mColorSpaceParameter : public CY4mParameter {
 public:
  explicit CY4mColorSpaceParameter(Y4mColorSpace space = Y4mColorSpace::C420) : CY4mParameter('C'), space_(space) {}
  Result Read(CBinaryReader* reader, unsigned char& last) override;
  Result Write(CBinaryWriter* writer) const override;
  Y4mColorSpace GetColorSpace() const { return space_; }
  // The header text without the letter ("420jpeg"); "420" for C420.
  static const char* GetText(Y4mColorSpace space);

 private:
  Y4mColorSpace space_;
};

class CY4mCommentParameter : public CY4mParameter {
 public:
  explicit CY4mCommentParameter(CString* text = nullptr);
  ~CY4mCommentParameter() override;
  Result Read(CBinaryReader* reader, unsigned char& last) override;
  Result Write(CBinaryWriter* writer) const override;
  CString* GetText() const { return text_; }

 private:
  CString* text_;
};

}  // namespace Corvane::Mox
