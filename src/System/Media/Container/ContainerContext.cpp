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

CContainerContext::CContainerContext(unsigned int type)
    : CObject(type), callback_(nullptr), user_(nullptr), defaultFileName_(nullptr), indexPath_(nullptr) {}

CContainerContext::~CContainerContext() {
  for (CString* name : fileNames_) name->Release();
  for (CStream* stream : streams_) stream->Release();
  if (defaultFileName_) defaultFileName_->Release();
  if (indexPath_) indexPath_->Release();
}

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

void Assign(CString*& slot, CString* value) {
  if (value) value->Acquire();
  CString* old = slot;
  slot = value;
  if (old) old->Release();
}

}  // namespace

CString* CContainerContext::GetDefaultFileName() const {
  CAutoLock lock(this);
  if (defaultFileName_) defaultFileName_->Acquire();
  return defaultFileName_;
}

void CContainerContext::SetDefaultFileName(CString* name) {
  CAutoLock lock(this);
  Assign(defaultFileName_, name);
}

int CContainerContext::GetFileNameCount() const {
  CAutoLock lock(this);
  return static_cast<int>(fileNames_.size());
}

CList<CString>* CContainerContext::GetFileNames() const {
  CAutoLock lock(this);
  auto* list = new CList<CString>();
  for (CString* name : fileNames_) list->Add(name);
  return list;
}

Result CContainerContext::AddFileName(CString* name, bool allowDuplicate) {
  if (!name) return ResultArgumentNull();
  CAutoLock lock(this);
  if (!allowDuplicate) {
    for (CString* held : fileNames_)
      if (!strcasecmp(held->GetChars(), name->GetChars())) return ResultFalse();
  }
  name->Acquire();
  fileNames_.push_back(name);
  return Result();
}

Result CContainerContext::RemoveFileName(CString* name) {
  if (!name) return ResultArgumentNull();
  CAutoLock lock(this);
  for (auto it = fileNames_.begin(); it != fileNames_.end(); ++it) {
    if (!strcasecmp((*it)->GetChars(), name->GetChars())) {
      (*it)->Release();
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
  for (CStream* stream : streams_) list->Add(stream);
  return list;
}

Result CContainerContext::AddStream(CStream* stream) {
  if (!stream) return ResultArgumentNull();
  CAutoLock lock(this);
  for (CStream* held : streams_)
    if (held == stream) return ResultFalse();
  stream->Acquire();
  streams_.push_back(stream);
  return Result();
}

Result CContainerContext::RemoveStream(CStream* stream) {
  CAutoLock lock(this);
  for (auto it = streams_.begin(); it != streams_.end(); ++it) {
    if (*it == stream) {
      (*it)->Release();
      streams_.erase(it);
      return Result();
    }
  }
  return ResultFalse();
}

long long CContainerContext::GetStreamsLength() const {
  CAutoLock lock(this);
  long long total = 0;
  for (CStream* stream : streams_) {
    const long long length = stream->GetLength();
    if (length > 0) total += length;
  }
  return total;
}

CString* CContainerContext::GetIndexPath() const {
  CAutoLock lock(this);
  if (indexPath_) indexPath_->Acquire();
  return indexPath_;
}

void CContainerContext::SetIndexPath(CString* path) {
  CAutoLock lock(this);
  Assign(indexPath_, path);
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
