#include "System/Media/Audio/AudioConfiguration.h"

#include "System/Media/Audio/AudioProperties.h"

namespace Corvane::Mox {

namespace {

bool Accepts(int wanted, int actual) {
  if (wanted == 0) return true;
  return wanted > 0 ? actual == wanted : actual != ~wanted;
}

int Fill(int own, int other) { return own != 0 ? own : other; }

}  // namespace

bool AudioConfiguration::Matches(const AudioConfiguration& other) const {
  return Accepts(format, other.format) && Accepts(sampleRate, other.sampleRate) && Accepts(channels, other.channels) &&
         Accepts(bitsPerSample, other.bitsPerSample);
}

AudioConfiguration AudioConfiguration::Qualify(const AudioConfiguration& other) const {
  AudioConfiguration out;
  out.format = Fill(format, other.format);
  out.sampleRate = Fill(sampleRate, other.sampleRate);
  out.channels = Fill(channels, other.channels);
  out.bitsPerSample = Fill(bitsPerSample, other.bitsPerSample);
  return out;
}

bool AudioConfiguration::IsQualified() const {
  return format > 0 && sampleRate > 0 && channels > 0 && bitsPerSample > 0;
}

AudioConfiguration AudioConfiguration::Create(const CAudioProperties* p) {
  AudioConfiguration c;
  if (!p) return c;
  c.format = static_cast<int>(p->GetFormat());
  c.sampleRate = static_cast<int>(p->GetSampleRate());
  c.channels = p->GetChannels();
  c.bitsPerSample = p->GetBitsPerSample();
  // Plain values only: a negative one would read as "anything except".
  for (int* value : {&c.format, &c.sampleRate, &c.channels, &c.bitsPerSample}) {
    if (*value < 0) *value = 0;
  }
  return c;
}

void AudioConfiguration::Apply(CAudioProperties* p) const {
  if (!p) return;
  if (format > 0) p->SetFormat(static_cast<unsigned int>(format));
  if (sampleRate > 0) p->SetSampleRate(sampleRate);
  if (channels > 0) p->SetChannels(channels);
  if (bitsPerSample > 0) p->SetBitsPerSample(bitsPerSample);
}

bool CAudioConfiguration::Matches(const CAudioProperties* properties) const {
  return properties && configuration_.Matches(AudioConfiguration::Create(properties));
}

bool CAudioConfiguration::Equals(const CObject* other) const {
  return other && other->IsType(TypeCode) &&
         static_cast<const CAudioConfiguration*>(other)->configuration_ == configuration_;
}

int CAudioConfiguration::GetHashCode() const {
  unsigned int hash = 0;
  for (int value : {configuration_.format, configuration_.sampleRate, configuration_.channels,
                    configuration_.bitsPerSample}) {
    hash += static_cast<unsigned int>(value);
    hash += hash << 10;
    hash ^= hash >> 6;
  }
  return static_cast<int>(hash);
}

}  // namespace Corvane::Mox
