#include "System/Media/Container/AudioChannelCodingAnalyzer.h"

#include <algorithm>

#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Audio/AudioSample.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/LockedDataReference.h"

namespace Corvane::Mox {

namespace {

struct SyncWords {
  int bits;
  unsigned int pa;
  unsigned int pb;
};

// The sync words of each burst word size; a word is looked at in its top
// `bits` bits.
constexpr SyncWords kSyncWords[] = {{16, 0xF872, 0x4E1F}, {20, 0x6F872, 0x54E1F}, {24, 0x96F872, 0xA54E1F}};

constexpr long long MaximumFrames = 384000;

int BytesPerSample(unsigned int format) {
  switch (format) {
    case FourCC("sowt"): return 2;
    case FourCC("02ni"):
    case FourCC("42ni"): return 3;
    case FourCC("23ni"): return 4;
    default: return 0;
  }
}

}  // namespace

CAudioChannelCodingAnalyzer::CAudioChannelCodingAnalyzer(CContainerReader* reader)
    : CContainerAnalyzer(TypeCode, reader),
      track_(0),
      channels_(0),
      bytesPerSample_(0),
      framesToScan_(0),
      framesScanned_(0),
      pairsFound_(0) {}

Result CAudioChannelCodingAnalyzer::Begin(int track, const CAudioProperties* properties) {
  if (!properties) return ResultArgumentNull();
  bytesPerSample_ = BytesPerSample(properties->GetFormat());
  channels_ = properties->GetChannels();
  if (!bytesPerSample_ || channels_ < 2) return ResultNotSupported("no channel pairs of integer PCM");
  track_ = track;
  // One second, and no more than a second at the highest common rate even
  // when a damaged header claims more.
  framesToScan_ = std::min(properties->GetSampleRate(), MaximumFrames);
  framesScanned_ = 0;
  pairsFound_ = 0;
  dataTypes_.assign(static_cast<size_t>(channels_ / 2), -1);
  return Result();
}

bool CAudioChannelCodingAnalyzer::WantsMore() const {
  return framesScanned_ < framesToScan_ && pairsFound_ < static_cast<int>(dataTypes_.size());
}

unsigned int CAudioChannelCodingAnalyzer::WordAt(const unsigned char* frame, int channel) const {
  const unsigned char* p = frame + channel * bytesPerSample_;
  unsigned int word = 0;
  for (int i = 0; i < bytesPerSample_; ++i) word |= static_cast<unsigned int>(p[i]) << (8 * (4 - bytesPerSample_ + i));
  return word;
}

void CAudioChannelCodingAnalyzer::CheckPair(const unsigned char* frame, const unsigned char* next, int pair) {
  const unsigned int a = WordAt(frame, 2 * pair);
  const unsigned int b = WordAt(frame, 2 * pair + 1);
  for (const SyncWords& sync : kSyncWords) {
    if (sync.bits > bytesPerSample_ * 8) break;
    const int shift = 32 - sync.bits;
    if ((a >> shift) != sync.pa || (b >> shift) != sync.pb) continue;
    dataTypes_[static_cast<size_t>(pair)] = static_cast<int>((WordAt(next, 2 * pair) >> shift) & 0x1F);
    ++pairsFound_;
    return;
  }
}

void CAudioChannelCodingAnalyzer::Scan(const unsigned char* bytes, int frames) {
  const int frameSize = channels_ * bytesPerSample_;
  // The burst info sits in the frame after the sync words, so the last
  // frame of a sample is not a start.
  for (int f = 0; f + 1 < frames && WantsMore(); ++f, ++framesScanned_) {
    const unsigned char* frame = bytes + static_cast<long long>(f) * frameSize;
    for (int pair = 0; pair < static_cast<int>(dataTypes_.size()); ++pair) {
      if (dataTypes_[static_cast<size_t>(pair)] < 0) CheckPair(frame, frame + frameSize, pair);
    }
  }
}

Result CAudioChannelCodingAnalyzer::Analyze(CAudioSample* sample) {
  if (!sample) return ResultArgumentNull();
  if (!bytesPerSample_) return ResultInvalidOperation("the analysis has not begun");
  Result result = GetReader()->ReadAudioData(track_, sample);
  if (result.Failed()) return result;
  RObject<CLockedDataReference> data(sample->GetLockedDataReference(CDataReference::LockShared));
  if (!data) return ResultNullPointer("the sample holds no data");
  const int frames = data->GetLength() / (channels_ * bytesPerSample_);
  Scan(data->GetData(), frames);
  return Result();
}

Result CAudioChannelCodingAnalyzer::End(CAudioProperties* properties) {
  if (!properties) return ResultArgumentNull();
  Result result;
  for (int pair = 0; pair < static_cast<int>(dataTypes_.size()) && result.Succeeded(); ++pair) {
    const int type = dataTypes_[static_cast<size_t>(pair)];
    if (type < 0) continue;
    result = properties->SetChannelCoding(2 * pair, GetCoding(type));
    if (result.Succeeded()) result = properties->SetChannelCoding(2 * pair + 1, GetCoding(type));
  }
  return result;
}

int CAudioChannelCodingAnalyzer::GetDataType(int pair) const {
  return pair >= 0 && pair < static_cast<int>(dataTypes_.size()) ? dataTypes_[static_cast<size_t>(pair)] : -1;
}

unsigned int CAudioChannelCodingAnalyzer::GetCoding(int dataType) {
  switch (dataType) {
    case 1: return FourCC("ac-3");
    case 16: return FourCC("ec-3");
    case 28: return FourCC("dlbe");
    default: return FourCC("s337");
  }
}

}  // namespace Corvane::Mox
