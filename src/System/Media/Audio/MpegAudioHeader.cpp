#include "System/Media/Audio/MpegAudioHeader.h"

#include "System/Media/Audio/AudioProperties.h"

namespace Corvane::Mox {

namespace {

// Kilobits per second by bit-rate index; rows: MPEG-1 layer I, II, III, then
// MPEG-2/2.5 layer I, layers II and III.
constexpr int kBitRates[5][16] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0},
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},
};

constexpr int kSampleRates[3] = {44100, 48000, 32000};

int BitRateRow(int version, int layer) {
  if (version == 1) return layer - 1;
  return layer == 1 ? 3 : 4;
}

}  // namespace

CMpegAudioHeader::CMpegAudioHeader()
    : CObject(TypeCode),
      version_(0),
      layer_(0),
      bitRate_(0),
      sampleRate_(0),
      channels_(0),
      frameLength_(0),
      samplesPerFrame_(0) {}

Result CMpegAudioHeader::Parse(const unsigned char* bytes) {
  if (!bytes) return ResultArgumentNull();
  if (bytes[0] != 0xFF || (bytes[1] & 0xE0) != 0xE0) return ResultFormatError("no MPEG audio sync word");
  const int versionBits = (bytes[1] >> 3) & 3;
  const int layerBits = (bytes[1] >> 1) & 3;
  const int bitRateIndex = bytes[2] >> 4;
  const int rateIndex = (bytes[2] >> 2) & 3;
  if (versionBits == 1 || layerBits == 0 || bitRateIndex == 0 || bitRateIndex == 15 || rateIndex == 3)
    return ResultFormatError("reserved MPEG audio header values");
  const int version = versionBits == 3 ? 1 : versionBits == 2 ? 2 : 25;
  const int layer = 4 - layerBits;
  const int padding = (bytes[2] >> 1) & 1;
  const int divisor = version == 1 ? 1 : version == 2 ? 2 : 4;
  const int sampleRate = kSampleRates[rateIndex] / divisor;
  const int bitRate = kBitRates[BitRateRow(version, layer)][bitRateIndex] * 1000;
  int samples = 1152;
  if (layer == 1) samples = 384;
  if (layer == 3 && version != 1) samples = 576;
  version_ = version;
  layer_ = layer;
  bitRate_ = bitRate;
  sampleRate_ = sampleRate;
  channels_ = (bytes[3] >> 6) == 3 ? 1 : 2;
  samplesPerFrame_ = samples;
  // Layer I counts in 4-byte slots.
  frameLength_ = layer == 1 ? (12 * bitRate / sampleRate + padding) * 4 : samples / 8 * bitRate / sampleRate + padding;
  return Result();
}

Result CMpegAudioHeader::GetProperties(CAudioProperties* properties) const {
  if (!properties) return ResultArgumentNull();
  Result result = properties->SetFormat(FourCC("mpga"));
  if (result.Succeeded()) result = properties->SetSampleRate(sampleRate_);
  if (result.Succeeded()) result = properties->SetChannels(channels_);
  if (result.Succeeded()) result = properties->SetBitRate(bitRate_);
  if (result.Succeeded()) result = properties->SetFramesPerPacket(samplesPerFrame_);
  return result;
}

}  // namespace Corvane::Mox
