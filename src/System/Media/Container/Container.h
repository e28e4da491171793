#pragma once
// CContainer: what readers and writers share. A container is a property bag
// (its configuration) with numbered video, audio and subtitle tracks, a
// context that says where its streams live, a ready flag whose clearing
// releases every waiter, and typed extensions (at most one per type code).
// The container's monitor guards the ready flag and every track queue.

#include <vector>

#include "System/Properties.h"

namespace Corvane::Mox {

class CAudioProperties;
class CContainerContext;
class CContainerPropertiesExtension;
template <class T>
class CList;
class CSubtitleProperties;
class CString;
class CVideoProperties;
template <class T>
class CValueList;
// A list of four-character format codes.
using CFormatList = CValueList<unsigned int>;

class CContainer : public CProperties {
 public:
  static constexpr int DefaultQueueSize = 256;
  static constexpr int DefaultCacheSize = 1048576;
  static constexpr int DefaultCacheCount = 128;

  explicit CContainer(unsigned int componentCode);
  ~CContainer() override;

  unsigned int GetComponentCode() const { return GetType(); }
  // The display name of the container kind (format table), or null.
  virtual const char* GetFormatName() const;

  // The context (not acquired), or null before one is set.
  virtual CContainerContext* GetContext() const { return context_; }
  virtual Result SetContext(CContainerContext* context);
  // A new string that identifies one of the container's files (`name`, or
  // the default file when null) across runs; null when the container cannot
  // name its files.
  virtual CString* GetFileIdentifier(CString*) const { return nullptr; }

  // Per track kind: the formats the container hands out or accepts (a new
  // list), null for a container without tracks of that kind; then the track
  // count and descriptions. The descriptions are acquired references (the
  // caller releases them), null for a bad index.
  virtual CFormatList* GetVideoFormats() const { return nullptr; }
  virtual int GetVideoMediaCount() const { return 0; }
  virtual CVideoProperties* GetVideoProperties(int) const { return nullptr; }
  virtual CFormatList* GetAudioFormats() const { return nullptr; }
  virtual int GetAudioMediaCount() const { return 0; }
  virtual CAudioProperties* GetAudioProperties(int) const { return nullptr; }
  virtual CFormatList* GetSubtitleFormats() const { return nullptr; }
  virtual int GetSubtitleMediaCount() const { return 0; }
  virtual CSubtitleProperties* GetSubtitleProperties(int) const { return nullptr; }

  // Readers start indexing (tracks known when BeginIndex returns); writers
  // open their output. EndIndex stops indexing or completes the file.
  virtual Result BeginIndex() = 0;
  virtual Result EndIndex() = 0;

  // Whether a track has a sample (or its end) to hand out now.
  virtual bool IsVideoReady(int) const { return false; }
  virtual bool IsAudioReady(int) const { return false; }
  virtual bool IsSubtitleReady(int) const { return false; }
  // True when any track is ready, testing once more after waiting at most
  // `timeout` milliseconds on the monitor.
  virtual bool WaitForMedia(int timeout) const;
  virtual bool IsReady() const;
  // Clearing the flag releases every producer and consumer blocked on the
  // container.
  virtual void SetReady(bool ready);

  int GetQueueSize() const;
  int GetBufferCapacity() const;
  int GetBufferCount() const;

  int GetExtensionCount() const;
  // The extension of that type (acquired), or null.
  CContainerPropertiesExtension* GetExtension(unsigned int type) const;
  // A new list holding every extension in the order added.
  CList<CContainerPropertiesExtension>* GetExtensions() const;
  bool ContainsExtension(unsigned int type) const;
  // Fails with "extension already exists" when one of the type is present.
  Result AddExtension(CContainerPropertiesExtension* extension);
  Result RemoveExtension(unsigned int type);
  void ClearExtensions();

 protected:
  // An Int32 setting of the bag, or the default when unset or not positive.
  int GetPositiveSetting(const PropertyName& name, int fallback) const;
  bool AnyTrackReady() const;
  // A new list of `count` format codes.
  static CFormatList* NewFormatList(const unsigned int* formats, int count);
  // The file name, without directory, of the context's file `name` (the
  // default file when null): how the one-file formats identify their file.
  // Null without a context or a name.
  CString* GetContextFileName(CString* name) const;

 private:
  CContainerContext* context_;
  bool ready_;
  std::vector<CContainerPropertiesExtension*> extensions_;
};

}  // namespace Corvane::Mox
