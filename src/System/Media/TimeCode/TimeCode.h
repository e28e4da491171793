#pragma once
// CTimeCode: an SMPTE time code (hours:minutes:seconds:frames), with or
// without drop-frame counting. The frame count since midnight is the
// authoritative value; the broken-down form is recomputed from it after every
// change. A plain value type: copy it freely.

#include "System/Result.h"

namespace Corvane::Mox {

class CString;

// The broken-down form; each field is one byte, as time codes carry it.
struct TimeCodeTime {
  unsigned char Hours = 0;
  unsigned char Minutes = 0;
  unsigned char Seconds = 0;
  unsigned char Frames = 0;
};

class CTimeCode {
 public:
  CTimeCode();
  // Modulus is timeScale ÷ frameDuration rounded up (30 for 30000/1001).
  CTimeCode(long long timeScale, long long frameDuration, bool dropFrame);
  CTimeCode(long long timeScale, long long frameDuration, int modulus, bool dropFrame);
  // An integer rate counts in whole frames (rate/1); any other rate is taken
  // as an NTSC-style rate over 1001 (29.97 gives 30000/1001).
  CTimeCode(double rate, bool dropFrame);

  void Initialize(long long timeScale, long long frameDuration, bool dropFrame);
  void Initialize(double rate, bool dropFrame);

  // Comparisons look at the frame count only.
  friend bool operator==(const CTimeCode& a, const CTimeCode& b) { return a.totalFrames_ == b.totalFrames_; }
  friend bool operator!=(const CTimeCode& a, const CTimeCode& b) { return a.totalFrames_ != b.totalFrames_; }
  friend bool operator<(const CTimeCode& a, const CTimeCode& b) { return a.totalFrames_ < b.totalFrames_; }
  friend bool operator<=(const CTimeCode& a, const CTimeCode& b) { return a.totalFrames_ <= b.totalFrames_; }
  friend bool operator>(const CTimeCode& a, const CTimeCode& b) { return a.totalFrames_ > b.totalFrames_; }
  friend bool operator>=(const CTimeCode& a, const CTimeCode& b) { return a.totalFrames_ >= b.totalFrames_; }
  bool operator==(int frames) const { return totalFrames_ == frames; }
  bool operator!=(int frames) const { return totalFrames_ != frames; }
  bool operator<(int frames) const { return totalFrames_ < frames; }
  bool operator<=(int frames) const { return totalFrames_ <= frames; }
  bool operator>(int frames) const { return totalFrames_ > frames; }
  bool operator>=(int frames) const { return totalFrames_ >= frames; }

  CTimeCode& operator=(int frames);
  CTimeCode operator+(int frames) const;
  CTimeCode operator-(int frames) const;
  CTimeCode operator+(const CTimeCode& other) const { return *this + other.totalFrames_; }
  CTimeCode operator-(const CTimeCode& other) const { return *this - other.totalFrames_; }
  CTimeCode& operator+=(int frames);
  CTimeCode& operator-=(int frames);
  CTimeCode& operator+=(const CTimeCode& other) { return *this += other.totalFrames_; }
  CTimeCode& operator-=(const CTimeCode& other) { return *this -= other.totalFrames_; }
  CTimeCode& operator++();
  CTimeCode& operator--();
  CTimeCode operator++(int);
  CTimeCode operator--(int);

  void AddFrames(int frames);
  // Adds t ÷ FrameDuration whole frames (none when FrameDuration is 0).
  void AddTime(long long t);
  // Adds whole seconds of labels: in drop-frame counting the labels skipped
  // within that span are not counted as frames.
  void AddSeconds(int seconds);

  long long GetTimeScale() const { return timeScale_; }
  long long GetDuration() const { return frameDuration_; }
  double GetFrameRate() const;
  int GetModulus() const { return modulus_; }
  bool IsDropFrame() const { return dropFrame_; }
  int GetHours() const { return time_.Hours; }
  int GetMinutes() const { return time_.Minutes; }
  int GetSeconds() const { return time_.Seconds; }
  int GetFrames() const { return time_.Frames; }
  int GetTotalFrames() const { return totalFrames_; }
  // TotalFrames × FrameDuration, in TimeScale units.
  long long GetTime() const;
  // The same time in another scale, rounded as media time is.
  long long GetTime(long long scale) const;
  // Frames in a day: Modulus × 86400, less the dropped labels.
  int GetMidnightValue() const;

  void FromFrames(int frames);
  void FromTime(long long t);
  Result FromTime(const TimeCodeTime* time);
  void ToTime(TimeCodeTime* time) const;
  // The four bytes of the broken-down form read as one native 32-bit value.
  unsigned int ToTime() const;

  // Parses "hh:mm:ss:ff" with any separators; ";" before the frames turns
  // drop-frame counting on (at 30 and 60 frames) unless keepDropFlag is set.
  Result FromString(const char* text);
  Result FromString(const char* text, bool keepDropFlag);
  Result FromString(CString* text);
  // A new string (caller releases), or null outside [0, midnight]. Drop-frame
  // time codes print the caller's separator before the frames, others ":".
  CString* ToString(char separator) const;
  // Writes into buffer (at least 13 bytes), or into the internal buffer when
  // buffer is null, and returns it.
  char* ToString(char* buffer, char separator);

  // Binary-coded decimal forms, as carried in many containers.
  Result FromDecimal(const TimeCodeTime* bcd);
  Result FromDecimal(const unsigned char* bcd);
  Result ToDecimal(TimeCodeTime* bcd);

  // Recomputes the frame count from the broken-down form, and back.
  Result TimeToFrames();
  Result FramesToTime();

  static unsigned char BinaryToDecimal(unsigned char b) {
    return static_cast<unsigned char>(((b / 10) << 4) | (b % 10));
  }
  static unsigned char DecimalToBinary(unsigned char b) { return static_cast<unsigned char>((b >> 4) * 10 + (b & 15)); }

 private:
  int DroppedPerMinute() const { return (modulus_ / 30) * 2; }
  // Breaks a frame count down; the count itself is not changed.
  TimeCodeTime BreakDown(long long frames) const;
  void SetTotal(long long frames);

  long long timeScale_;
  long long frameDuration_;
  int modulus_;
  bool dropFrame_;
  int totalFrames_;
  TimeCodeTime time_;
  char text_[13];
};

}  // namespace Corvane::Mox
