#pragma once
// CAudioChannelCodingAnalyzer ("m773"): finds SMPTE 337 data bursts in the
// channel pairs of little-endian integer PCM. A burst starts with the sync
// words Pa and Pb (16-bit 0xF872/0x4E1F, 20-bit 0x6F872/0x54E1F, 24-bit
// 0x96F872/0xA54E1F, left-justified in the sample word) in the two channels
// of one frame, followed by the burst info Pc whose low 5 bits are the data
// type. A pair with a burst gets the data type's coding on both channels;
// plain PCM is left as it is.

#include <vector>

#include "System/Media/Container/ContainerAnalyzer.h"

namespace Corvane::Mox {

class CAudioChannelCodingAnalyzer : public CContainerAnalyzer {
 public:
  static constexpr unsigned int TypeCode = FourCC("m773");

  explicit CAudioChannelCodingAnalyzer(CContainerReader* reader);

  Result Begin(int track, const CAudioProperties* properties) override;
  // Until every pair has shown a burst or one second has been looked at.
  bool WantsMore() const override;
  Result Analyze(CAudioSample* sample) override;
  // Sets the channel coding of both channels of every pair with a burst.
  Result End(CAudioProperties* properties) override;

  // The data type found in a pair, -1 when none.
  int GetDataType(int pair) const;
  // The coding of a data type: "ac-3" (1), "ec-3" (16), "dlbe" (28), else
  // "s337".
  static unsigned int GetCoding(int dataType);

 private:
  // Scans interleaved frames of the sample's bytes.
  void Scan(const unsigned char* bytes, int frames);
  // Sample value of one channel of a frame, left-justified in 32 bits.
  unsigned int WordAt(const unsigned char* frame, int channel) const;
  // Checks a pair at a frame and the next for a burst start.
  void CheckPair(const unsigned char* frame, const unsigned char* next, int pair);

  int track_;
  int channels_;
  int bytesPerSample_;
  long long framesToScan_;
  long long framesScanned_;
  int pairsFound_;
  std::vector<int> dataTypes_;
};

}  // namespace Corvane::Mox
