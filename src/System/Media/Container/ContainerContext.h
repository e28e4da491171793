#pragma once
// CContainerContext: where a container's streams come from and go to. It
// names the default file, records every file name used (the manifest) and
// every stream opened (so a reader's size is the sum of its streams), and
// lets a host veto or observe each open through a callback. Subclasses say
// how a name becomes a stream: a directory, a caller's stream, a URL.

#include <vector>

#include "System/IO/Stream.h"
#include "System/Text.h"

namespace Corvane::Mox {

class CContainerReader;
class CContainerWriter;
class CStream;
class CString;
template <class T>
class CList;

class CContainerContext : public CObject {
 public:
  using OpenStreamCallback = Result (*)(void* user, CString* path);

  explicit CContainerContext(unsigned int type);
  ~CContainerContext() override;

  // A directory context for a file stream (after unwrapping a wrapping
  // stream), otherwise a stream context around the stream as given.
  static CContainerContext* Create(CStream* stream);

  virtual CString* GetDefaultFileName() const;  // acquired, or null
  virtual void SetDefaultFileName(CString* name);
  virtual int GetFileNameCount() const;
  virtual CList<CString>* GetFileNames() const;  // a new list
  // Records a name; a case-insensitive duplicate is added only when allowed.
  virtual Result AddFileName(CString* name, bool allowDuplicate);
  virtual Result RemoveFileName(CString* name);
  // The full path or URL of a name (acquired), or null.
  virtual CString* GetFilePath(CString* name) const = 0;
  virtual bool Exists(CString* name) const;
  virtual Result OpenStream(CContainerReader* reader, CString* name, CStream*& stream, bool buffered) = 0;
  virtual Result OpenStream(CContainerWriter* writer, CString* name, CStream*& stream, bool buffered) = 0;

  void SetOpenStreamCallback(OpenStreamCallback callback, void* user);
  CList<CStream>* GetStreams() const;  // a new list
  Result AddStream(CStream* stream);
  Result RemoveStream(CStream* stream);
  // The summed lengths of the streams opened so far.
  long long GetStreamsLength() const;
  CString* GetIndexPath() const;  // acquired, or null
  void SetIndexPath(CString* path);
  // Lets the callback (if any) veto opening the path.
  Result OnOpenStream(CString* path) const;

  // Conveniences that throw the failure and return the stream.
  CStream* OpenStream(CContainerReader* reader, CString* name, bool buffered);
  CStream* OpenStream(CContainerWriter* writer, CString* name, bool buffered);

 protected:
  // Wraps a file stream in the container's cache when asked and possible.
  static CStream* Buffer(CStream* stream, int capacity, int count, bool buffered);

 private:
  OpenStreamCallback callback_;
  void* user_;
  RObject<CString> defaultFileName_;
  RObject<CString> indexPath_;
  std::vector<RObject<CString>> fileNames_;
  std::vector<RObject<CStream>> streams_;
};

}  // namespace Corvane::Mox
