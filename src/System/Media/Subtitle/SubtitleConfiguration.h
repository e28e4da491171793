#pragma once
// Partial subtitle descriptions {Format, TimeScale, FrameDuration}: 0 is
// "unspecified", a negative value v "anything except ~v".

#include "System/Object.h"

namespace Corvane::Mox {

class CSubtitleProperties;

struct SubtitleConfiguration {
  int format = 0;
  long long timeScale = 0;
  long long frameDuration = 0;

  bool IsFormatSpecified() const { return format != 0; }
  bool IsTimeScaleSpecified() const { return timeScale != 0; }
  bool IsFrameDurationSpecified() const { return frameDuration != 0; }

  bool Matches(const SubtitleConfiguration& other) const;
  SubtitleConfiguration Qualify(const SubtitleConfiguration& other) const;
  bool IsQualified() const { return format > 0 && timeScale > 0; }
  static SubtitleConfiguration Create(const CSubtitleProperties* properties);
  void Apply(CSubtitleProperties* properties) const;

  friend bool operator==(const SubtitleConfiguration& a, const SubtitleConfiguration& b) {
    return a.format == b.format && a.timeScale == b.timeScale && a.frameDuration == b.frameDuration;
  }
};

class CSubtitleConfiguration : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("scfg");

  CSubtitleConfiguration() : CObject(TypeCode) {}
  explicit CSubtitleConfiguration(const SubtitleConfiguration& configuration)
      : CObject(TypeCode), configuration_(configuration) {}

  const SubtitleConfiguration& GetConfiguration() const { return configuration_; }
  SubtitleConfiguration& GetConfiguration() { return configuration_; }
  bool Matches(const CSubtitleProperties* properties) const;
  bool Equals(const CObject* other) const override;

 private:
  SubtitleConfiguration configuration_;
};

}  // namespace Corvane::Mox
