#pragma once
// CContainerReader: the base of the readers that open a media file (or
// stream) and deliver its tracks. A reader is a property bag; its type code
// is its four-character component code.

#include "System/Media/Container/Container.h"

namespace Corvane::Mox {

class CAudioSample;
class CString;
class CSubtitleSample;
class CVideoSample;

class CContainerReader : public CContainer {
 public:
  explicit CContainerReader(unsigned int componentCode) : CContainer(componentCode) {}

  Result BeginIndex() override { return Result(); }
  Result EndIndex() override { return Result(); }

  // The next sample of a track (acquired), or null at the track's end. The
  // sample carries a "read" data reference until its bytes are read.
  virtual Result ReadVideoSample(int track, CVideoSample*& sample);
  virtual Result ReadAudioSample(int track, CAudioSample*& sample);
  virtual Result ReadSubtitleSample(int track, CSubtitleSample*& sample);

  // A reader for the file chosen by its content and name, or null when no
  // registered reader recognises it.
  static CContainerReader* Create(CString* path);
  // A reader of the given type for the file, or null when no available
  // reader of that type exists. The path is kept as the "file" property.
  static CContainerReader* Create(CString* path, unsigned int type);
};

// Creation of readers through their registry.
class CContainerReaderInventory {
 public:
  // A bare reader of the type (the caller owns it), or null.
  static CContainerReader* Create(unsigned int type);
};

}  // namespace Corvane::Mox
