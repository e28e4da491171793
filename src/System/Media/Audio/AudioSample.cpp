#include "System/Media/Audio/AudioSample.h"

#include "System/Media/Audio/AudioProperties.h"

namespace Corvane::Mox {

CAudioSample::CAudioSample(long long duration) : CMediaSample(TypeCode, duration) {}

CAudioSample::CAudioSample(const CAudioSample* sample) : CMediaSample(TypeCode, sample) {}

long long CAudioSample::GetPackets(CAudioProperties* properties) const {
  int framesPerPacket = properties ? properties->GetFramesPerPacket() : 0;
  return framesPerPacket > 0 ? GetDuration() / framesPerPacket : 0;
}

}  // namespace Corvane::Mox
