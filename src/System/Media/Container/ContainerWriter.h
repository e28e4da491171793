#pragma once
// CContainerWriter: the base of the writers that store tracks in a media
// file. A writer is a property bag; its type code is its component code.

#include "System/Media/Container/Container.h"

namespace Corvane::Mox {

class CAudioSample;
class CString;
class CSubtitleSample;
class CVideoSample;

class CContainerWriter : public CContainer {
 public:
  explicit CContainerWriter(unsigned int componentCode) : CContainer(componentCode) {}

  Result BeginIndex() override { return Result(); }
  Result EndIndex() override { return Result(); }

  // Adds a track (the writer keeps a copy of the description); its number
  // within its kind is the kind's track count before the call. The base
  // supports no media: ResultNotSupported "video media is not supported".
  virtual Result AddVideoMedia(CVideoProperties* properties);
  virtual Result AddAudioMedia(CAudioProperties* properties);
  virtual Result AddSubtitleMedia(CSubtitleProperties* properties);
  // Writes a sample to a track; a null sample is ignored.
  virtual Result WriteVideoSample(int track, CVideoSample* sample);
  virtual Result WriteAudioSample(int track, CAudioSample* sample);
  virtual Result WriteSubtitleSample(int track, CSubtitleSample* sample);

  // A writer of the type for the file (kept as the "file" property), or null
  // when no available writer of that type exists.
  static CContainerWriter* Create(CString* path, unsigned int type);
};

// The writer type for a path, from its extension (case-insensitive): "ts"
// gives "m2ts", "mov" "mov ", "mp4" "mp4 "; 0 when the extension says nothing.
unsigned int GetContainerWriterType(CString* path);

}  // namespace Corvane::Mox
