#include "System/Media/TimeCode/TimeCode.h"

#include <cmath>
#include <cstdio>
#include <cstring>

#include "System/Media/TimeCode/TimeScale.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

int CeilingRatio(long long numerator, long long denominator) {
  if (denominator == 0) return 0;
  return static_cast<int>((numerator + denominator - 1) / denominator);
}

// Keeps frame arithmetic inside the 32-bit count without overflowing.
int ClampFrames(long long frames) {
  if (frames > 0x7FFFFFFFLL) return 0x7FFFFFFF;
  if (frames < -0x7FFFFFFFLL - 1) return -0x7FFFFFFF - 1;
  return static_cast<int>(frames);
}

}  // namespace

CTimeCode::CTimeCode()
    : timeScale_(CTimeScale::DefaultTimeScale), frameDuration_(0), modulus_(0), dropFrame_(false), totalFrames_(0),
      time_(), text_() {}

CTimeCode::CTimeCode(long long timeScale, long long frameDuration, bool dropFrame) : CTimeCode() {
  Initialize(timeScale, frameDuration, dropFrame);
}

CTimeCode::CTimeCode(long long timeScale, long long frameDuration, int modulus, bool dropFrame) : CTimeCode() {
  timeScale_ = timeScale;
  frameDuration_ = frameDuration;
  modulus_ = modulus;
  dropFrame_ = dropFrame;
}

CTimeCode::CTimeCode(double rate, bool dropFrame) : CTimeCode() { Initialize(rate, dropFrame); }

void CTimeCode::Initialize(long long timeScale, long long frameDuration, bool dropFrame) {
  timeScale_ = timeScale;
  frameDuration_ = frameDuration;
  modulus_ = frameDuration > 0 && timeScale > 0 ? CeilingRatio(timeScale, frameDuration) : 0;
  dropFrame_ = dropFrame;
  totalFrames_ = 0;
  time_ = TimeCodeTime();
}

void CTimeCode::Initialize(double rate, bool dropFrame) {
  if (!std::isfinite(rate) || rate <= 0.0 || rate > 1.0e6) rate = 0.0;
  if (rate == std::floor(rate)) {
    timeScale_ = static_cast<long long>(rate);
    frameDuration_ = 1;
  } else {
    timeScale_ = static_cast<long long>(std::floor(rate * 1001.0 + 0.5));
    frameDuration_ = 1001;
  }
  modulus_ = static_cast<int>(std::ceil(rate));
  dropFrame_ = dropFrame;
  totalFrames_ = 0;
  time_ = TimeCodeTime();
}

CTimeCode& CTimeCode::operator=(int frames) {
  SetTotal(frames);
  return *this;
}

CTimeCode CTimeCode::operator+(int frames) const {
  CTimeCode result(*this);
  result.SetTotal(static_cast<long long>(totalFrames_) + frames);
  return result;
}

CTimeCode CTimeCode::operator-(int frames) const {
  CTimeCode result(*this);
  result.SetTotal(static_cast<long long>(totalFrames_) - frames);
  return result;
}

CTimeCode& CTimeCode::operator+=(int frames) {
  AddFrames(frames);
  return *this;
}

CTimeCode& CTimeCode::operator-=(int frames) {
  SetTotal(static_cast<long long>(totalFrames_) - frames);
  return *this;
}

CTimeCode& CTimeCode::operator++() {
  AddFrames(1);
  return *this;
}

CTimeCode& CTimeCode::operator--() {
  AddFrames(-1);
  return *this;
}

CTimeCode CTimeCode::operator++(int) {
  CTimeCode old(*this);
  AddFrames(1);
  return old;
}

CTimeCode CTimeCode::operator--(int) {
  CTimeCode old(*this);
  AddFrames(-1);
  return old;
}

void CTimeCode::AddFrames(int frames) { SetTotal(static_cast<long long>(totalFrames_) + frames); }

void CTimeCode::AddTime(long long t) {
  if (frameDuration_ == 0) return SetTotal(totalFrames_);
  SetTotal(totalFrames_ + t / frameDuration_);
}

void CTimeCode::AddSeconds(int seconds) {
  long long frames = static_cast<long long>(seconds) * modulus_;
  if (dropFrame_) {
    const long long minutes = (seconds / 60) % 60;
    frames -= static_cast<long long>(DroppedPerMinute()) * (54LL * (seconds / 3600) + 9 * (minutes / 10) + minutes % 10);
  }
  SetTotal(totalFrames_ + frames);
}

double CTimeCode::GetFrameRate() const {
  return frameDuration_ == 0 ? 0.0 : static_cast<double>(timeScale_) / static_cast<double>(frameDuration_);
}

long long CTimeCode::GetTime() const { return static_cast<long long>(totalFrames_) * frameDuration_; }

long long CTimeCode::GetTime(long long scale) const {
  const long long time = GetTime();
  if (time == 0) return 0;
  return CTimeScale(timeScale_).ToTime(time, scale);
}

int CTimeCode::GetMidnightValue() const {
  long long midnight = static_cast<long long>(modulus_) * 86400;
  if (dropFrame_) midnight -= (modulus_ / 30) * 2592LL;
  return ClampFrames(midnight);
}

void CTimeCode::FromFrames(int frames) { SetTotal(frames); }

void CTimeCode::FromTime(long long t) { SetTotal(frameDuration_ == 0 ? 0 : t / frameDuration_); }

Result CTimeCode::FromTime(const TimeCodeTime* time) {
  if (!time) return ResultArgumentNull();
  time_ = *time;
  return TimeToFrames();
}

void CTimeCode::ToTime(TimeCodeTime* time) const {
  if (time) *time = time_;
}

unsigned int CTimeCode::ToTime() const {
  unsigned int packed = 0;
  std::memcpy(&packed, &time_, sizeof packed);
  return packed;
}

Result CTimeCode::FromString(const char* text) { return FromString(text, false); }

Result CTimeCode::FromString(const char* text, bool keepDropFlag) {
  if (!text) return ResultArgumentNull();
  signed char hours = 0, minutes = 0, seconds = 0, frames = 0;
  char separator = 0;
  if (std::sscanf(text, "%2hhd%*c%2hhd%*c%2hhd%c%2hhd", &hours, &minutes, &seconds, &separator, &frames) != 5)
    return ResultError("'%s' is not a time code", text);
  if ((modulus_ == 30 || modulus_ == 60) && !keepDropFlag) dropFrame_ = separator == ';';
  time_.Hours = static_cast<unsigned char>(hours);
  time_.Minutes = static_cast<unsigned char>(minutes);
  time_.Seconds = static_cast<unsigned char>(seconds);
  time_.Frames = static_cast<unsigned char>(frames);
  return TimeToFrames();
}

Result CTimeCode::FromString(CString* text) {
  if (!text) return ResultArgumentNull();
  return FromString(text->GetChars(), false);
}

CString* CTimeCode::ToString(char separator) const {
  if (totalFrames_ < 0 || totalFrames_ > GetMidnightValue() || modulus_ == 0) return nullptr;
  CTimeCode copy(*this);
  return CString::WithString(copy.ToString(static_cast<char*>(nullptr), separator));
}

char* CTimeCode::ToString(char* buffer, char separator) {
  FramesToTime();
  char* out = buffer ? buffer : text_;
  // Fields above 99 (a broken-down form out of range) are cut at 13 bytes.
  char full[24];
  std::snprintf(full, sizeof full, "%02d:%02d:%02d%c%02d", time_.Hours, time_.Minutes, time_.Seconds,
                dropFrame_ ? separator : ':', time_.Frames);
  std::memcpy(out, full, sizeof text_ - 1);
  out[sizeof text_ - 1] = 0;
  return out;
}

Result CTimeCode::FromDecimal(const TimeCodeTime* bcd) {
  if (!bcd) return ResultArgumentNull();
  time_.Hours = DecimalToBinary(bcd->Hours);
  time_.Minutes = DecimalToBinary(bcd->Minutes);
  time_.Seconds = DecimalToBinary(bcd->Seconds);
  time_.Frames = DecimalToBinary(bcd->Frames);
  return TimeToFrames();
}

Result CTimeCode::FromDecimal(const unsigned char* bcd) {
  if (!bcd) return ResultArgumentNull();
  const TimeCodeTime time{bcd[0], bcd[1], bcd[2], bcd[3]};
  return FromDecimal(&time);
}

Result CTimeCode::ToDecimal(TimeCodeTime* bcd) {
  if (!bcd) return ResultArgumentNull();
  Result result = FramesToTime();
  if (result.Failed()) return result;
  bcd->Hours = BinaryToDecimal(time_.Hours);
  bcd->Minutes = BinaryToDecimal(time_.Minutes);
  bcd->Seconds = BinaryToDecimal(time_.Seconds);
  bcd->Frames = BinaryToDecimal(time_.Frames);
  return ResultOK();
}

Result CTimeCode::TimeToFrames() {
  if (modulus_ <= 0) return ResultError("time code has no frame rate");
  const long long mod = modulus_;
  const long long midnight = GetMidnightValue();
  long long n = ((time_.Hours * 60LL + time_.Minutes) * 60 + time_.Seconds) * mod + time_.Frames;
  if (dropFrame_) {
    const long long d = DroppedPerMinute();
    // A label that drop-frame counting skips moves to the first that exists.
    if (n % (mod * 60) == 0 && n % (mod * 600) != 0) n += d;
    n -= d * (54LL * time_.Hours + 9 * (time_.Minutes / 10) + time_.Minutes % 10);
  }
  if (n >= midnight) n -= midnight;
  if (n < 0) n += midnight;
  totalFrames_ = ClampFrames(n);
  return ResultOK();
}

Result CTimeCode::FramesToTime() {
  if (modulus_ <= 0) return ResultError("time code has no frame rate");
  time_ = BreakDown(totalFrames_);
  return ResultOK();
}

TimeCodeTime CTimeCode::BreakDown(long long n) const {
  const long long mod = modulus_;
  const long long midnight = GetMidnightValue();
  if (n >= midnight) n -= midnight;
  if (n < 0) n += midnight;
  if (dropFrame_) {
    // Count the skipped labels back in: each minute not divisible by ten
    // skips d labels; adding them can cross further minute boundaries, so
    // repeat until the count of crossed minutes settles.
    const long long d = DroppedPerMinute();
    long long previous = 0;
    for (;;) {
      const long long minutes = n / (mod * 60) - n / (mod * 600);
      n += d * (minutes - previous);
      if (minutes <= previous) break;
      previous = minutes;
    }
  }
  TimeCodeTime time;
  time.Hours = static_cast<unsigned char>(n / (mod * 3600));
  long long rest = n % (mod * 3600);
  time.Minutes = static_cast<unsigned char>(rest / (mod * 60));
  rest %= mod * 60;
  time.Seconds = static_cast<unsigned char>(rest / mod);
  time.Frames = static_cast<unsigned char>(rest % mod);
  return time;
}

void CTimeCode::SetTotal(long long frames) {
  totalFrames_ = ClampFrames(frames);
  if (modulus_ > 0) time_ = BreakDown(totalFrames_);
}

}  // namespace Corvane::Mox
