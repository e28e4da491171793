#include "System/Media/Container/ContainerContext.h"

#include <strings.h>

#include "System/Collections/List.h"
#include "System/IO/BufferedStream.h"
#include "System/IO/File.h"
#include "System/IO/FileStream.h"
#include "System/IO/WrappedStream.h"
#include "System/Media/Container/ContainerDirectoryContext.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerStreamContext.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Text.h"

namespace Corvane::Mox {

CContainerContext::CContainerContext(unsigned int type) : CObject(type), callback_(nullptr), user_(nullptr) {}

CContainerContext::~CContainerContext() = default;

CContainerContext* CContainerContext::Create(CStream* stream) {
  if (!stream) return nullptr;
  RObject<CStream> base(stream->IsType(CWrappedStream::TypeCode) ? static_cast<CWrappedStream*>(stream)->GetStream()
                                                                 : nullptr);
  CStream* unwrapped = base ? base.Get() : stream;
  if (unwrapped->IsType(CFileStream::TypeCode)) {
    RObject<CString> path(static_cast<CFileStream*>(unwrapped)->GetPath());
    if (CContainerContext* context = CContainerDirectoryContext::Create(path)) return context;
  }
  return new CContainerStreamContext(stream);
}

namespace {

// A new reference to what `held` holds, or null.
template <class T>
T* Shared(const RObject<T>& held) {
  if (held) held->Acquire();
  return held.Get();
}

// Holds a new reference to `value`.
template <class T>
void Hold(RObject<T>& slot, T* value) {
  if (value) value->Acquire();
  slot = value;
}

}  // namespace

CString* CContainerContext::GetDefaultFileName() const {
  CAutoLock lock(this);
  return Shared(defaultFileName_);
}

void CContainerContext::SetDefaultFileName(CString* name) {
  CAutoLock lock(this);
  Hold(defaultFileName_, name);
}

int CContainerContext::GetFileNameCount() const {
  CAutoLock lock(this);
  return static_cast<int>(fileNames_.size());
}

CList<CString>* CContainerContext::GetFileNames() const {
  CAutoLock lock(this);
  auto* list = new CList<CString>();
  for (const RObject<CString>& name : fileNames_) list->Add(name);
  return list;
}

Result CContainerContext::AddFileName(CString* name, bool allowDuplicate) {
  if (!name) return ResultArgumentNull();
  CAutoLock lock(this);
  if (!allowDuplicate) {
    for (const RObject<CString>& held : fileNames_)
      if (!strcasecmp(held->GetChars(), name->GetChars())) return ResultFalse();
  }
  fileNames_.emplace_back();
  Hold(fileNames_.back(), name);
  return Result();
}

Result CContainerContext::RemoveFileName(CString* name) {
  if (!name) return ResultArgumentNull();
  CAutoLock lock(this);
  for (auto it = fileNames_.begin(); it != fileNames_.end(); ++it) {
    if (!strcasecmp((*it)->GetChars(), name->GetChars())) {
      fileNames_.erase(it);
      return Result();
    }
  }
  return ResultFalse();
}

bool CContainerContext::Exists(CString* name) const {
  RObject<CString> path(GetFilePath(name));
  return path && CFile::Exists(path);
}

void CContainerContext::SetOpenStreamCallback(OpenStreamCallback callback, void* user) {
  CAutoLock lock(this);
  callback_ = callback;
  user_ = user;
}

CList<CStream>* CContainerContext::GetStreams() const {
  CAutoLock lock(this);
  auto* list = new CList<CStream>();
  for (const RObject<CStream>& stream : streams_) list->Add(stream);
  return list;
}

Result CContainerContext::AddStream(CStream* stream) {
  if (!stream) return ResultArgumentNull();
  CAutoLock lock(this);
  for (const RObject<CStream>& held : streams_)
    if (held.Get() == stream) return ResultFalse();
  streams_.emplace_back();
  Hold(streams_.back(), stream);
  return Result();
}

Result CContainerContext::RemoveStream(CStream* stream) {
  CAutoLock lock(this);
  for (auto it = streams_.begin(); it != streams_.end(); ++it) {
    if (it->Get() == stream) {
      streams_.erase(it);
      return Result();
    }
  }
  return ResultFalse();
}

long long CContainerContext::GetStreamsLength() const {
  CAutoLock lock(this);
  long long total = 0;
  for (const RObject<CStream>& stream : streams_) {
    const long long length = stream->GetLength();
    if (length > 0) total += length;
  }
  return total;
}

CString* CContainerContext::GetIndexPath() const {
  CAutoLock lock(this);
  return Shared(indexPath_);
}

void CContainerContext::SetIndexPath(CString* path) {
  CAutoLock lock(this);
  Hold(indexPath_, path);
}

Result CContainerContext::OnOpenStream(CString* path) const {
  OpenStreamCallback callback;
  void* user;
  {
    CAutoLock lock(this);
    callback = callback_;
    user = user_;
  }
  return callback ? callback(user, path) : Result();
}

CStream* CContainerContext::OpenStream(CContainerReader* reader, CString* name, bool buffered) {
  CStream* stream = nullptr;
  OpenStream(reader, name, stream, buffered).ThrowIfFailed();
  return stream;
}

CStream* CContainerContext::OpenStream(CContainerWriter* writer, CString* name, bool buffered) {
  CStream* stream = nullptr;
  OpenStream(writer, name, stream, buffered).ThrowIfFailed();
  return stream;
}

CStream* CContainerContext::Buffer(CStream* stream, int capacity, int count, bool buffered) {
  if (!buffered || static_cast<long long>(capacity) * count < 1) return stream;
  CStream* wrapped = new CBufferedStream(stream, capacity, count);
  stream->Release();
  return wrapped;
}

}  // namespace Corvane::Mox
