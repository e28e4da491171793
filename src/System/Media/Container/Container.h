#pragma once
// CContainer: what readers and writers share. A container is a property bag
// (its configuration) with numbered video, audio and subtitle tracks, a
// ready flag that releases every waiter when cleared, and typed extensions.
// The base answers "no tracks" for every kind; formats override the getters.

#include "System/Properties.h"

namespace Corvane::Mox {

class CAudioProperties;
class CSubtitleProperties;
class CVideoProperties;

class CContainer : public CProperties {
 public:
  explicit CContainer(unsigned int componentCode) : CProperties(componentCode, nullptr) {}

  unsigned int GetComponentCode() const { return GetType(); }

  // Track counts and descriptions. The descriptions are acquired references
  // (the caller releases them), null for a bad index.
  virtual int GetVideoMediaCount() const { return 0; }
  virtual CVideoProperties* GetVideoProperties(int) const { return nullptr; }
  virtual int GetAudioMediaCount() const { return 0; }
  virtual CAudioProperties* GetAudioProperties(int) const { return nullptr; }
  virtual int GetSubtitleMediaCount() const { return 0; }
  virtual CSubtitleProperties* GetSubtitleProperties(int) const { return nullptr; }

  // Readers start indexing (tracks known when BeginIndex returns); writers
  // open their output. EndIndex stops indexing or completes the file.
  virtual Result BeginIndex() = 0;
  virtual Result EndIndex() = 0;
};

}  // namespace Corvane::Mox
