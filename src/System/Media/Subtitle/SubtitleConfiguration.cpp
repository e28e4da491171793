#include "System/Media/Subtitle/SubtitleConfiguration.h"

#include "System/Media/Subtitle/SubtitleProperties.h"

namespace Corvane::Mox {

namespace {

template <class T>
bool Accepts(T wanted, T actual) {
  if (wanted == 0) return true;
  return wanted > 0 ? actual == wanted : actual != ~wanted;
}

}  // namespace

bool SubtitleConfiguration::Matches(const SubtitleConfiguration& other) const {
  return Accepts(format, other.format) && Accepts(timeScale, other.timeScale) &&
         Accepts(frameDuration, other.frameDuration);
}

SubtitleConfiguration SubtitleConfiguration::Qualify(const SubtitleConfiguration& other) const {
  SubtitleConfiguration out = *this;
  if (!out.format) out.format = other.format;
  if (!out.timeScale) out.timeScale = other.timeScale;
  if (!out.frameDuration) out.frameDuration = other.frameDuration;
  return out;
}

SubtitleConfiguration SubtitleConfiguration::Create(const CSubtitleProperties* p) {
  SubtitleConfiguration c;
  if (!p) return c;
  c.format = static_cast<int>(p->GetFormat());
  c.timeScale = p->GetTimeScale();
  c.frameDuration = p->GetSampleDuration();
  // Plain values only: a negative one would read as "anything except".
  if (c.format < 0) c.format = 0;
  if (c.timeScale < 0) c.timeScale = 0;
  if (c.frameDuration < 0) c.frameDuration = 0;
  return c;
}

void SubtitleConfiguration::Apply(CSubtitleProperties* p) const {
  if (!p) return;
  if (format > 0) p->SetFormat(static_cast<unsigned int>(format));
  if (timeScale > 0) p->SetTimeScale(timeScale);
  if (frameDuration > 0) p->SetSampleDuration(frameDuration);
}

bool CSubtitleConfiguration::Matches(const CSubtitleProperties* properties) const {
  return properties && configuration_.Matches(SubtitleConfiguration::Create(properties));
}

bool CSubtitleConfiguration::Equals(const CObject* other) const {
  return other && other->IsType(TypeCode) &&
         static_cast<const CSubtitleConfiguration*>(other)->configuration_ == configuration_;
}

}  // namespace Corvane::Mox
