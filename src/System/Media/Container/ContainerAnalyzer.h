#pragma once
// CContainerAnalyzer: a measurement a reader runs over the first samples of
// one of its tracks while indexing, to learn what the headers do not say
// (for example that a PCM channel pair carries coded data). The reader
// begins it, feeds samples while it wants more, then lets it write its
// findings into the track description.

#include "System/Object.h"

namespace Corvane::Mox {

class CAudioProperties;
class CAudioSample;
class CContainerReader;

class CContainerAnalyzer : public CObject {
 public:
  // The reader is not acquired: the analyzer lives inside the reader's
  // indexing and must not keep it alive.
  CContainerAnalyzer(unsigned int type, CContainerReader* reader);

  // "m773": a CAudioChannelCodingAnalyzer; null for any other type.
  static CContainerAnalyzer* Create(CContainerReader* reader, unsigned int type);

  // Starts on an audio track; ResultNotSupported when the track's format is
  // not one the analyzer reads (the reader then skips the analysis).
  virtual Result Begin(int track, const CAudioProperties* properties) = 0;
  // True while another sample would add to the findings.
  virtual bool WantsMore() const = 0;
  // Looks at one sample of the track (its bytes are read through the reader).
  virtual Result Analyze(CAudioSample* sample) = 0;
  // Writes the findings into the track description.
  virtual Result End(CAudioProperties* properties) = 0;

 protected:
  CContainerReader* GetReader() const { return reader_; }

 private:
  CContainerReader* reader_;
};

}  // namespace Corvane::Mox
