#include "System/Media/Container/ContainerStreamContext.h"

#include "System/IO/File.h"
#include "System/IO/Stream.h"
#include "System/Text.h"

namespace Corvane::Mox {

CContainerStreamContext::CContainerStreamContext(CStream* stream) : CContainerContext(TypeCode), stream_(stream) {
  if (stream_) stream_->Acquire();
}

CContainerStreamContext::~CContainerStreamContext() {
  if (stream_) stream_->Release();
}

void CContainerStreamContext::SetOpenForReadCallback(OpenCallback callback, void* user) {
  openForRead_ = {callback, user};
}
void CContainerStreamContext::SetOpenForWriteCallback(OpenCallback callback, void* user) {
  openForWrite_ = {callback, user};
}
void CContainerStreamContext::SetExistsCallback(ExistsCallback callback, void* user) { exists_ = {callback, user}; }
void CContainerStreamContext::SetDirectoryPathCallback(TextCallback callback, void* user) {
  directoryPath_ = {callback, user};
}
void CContainerStreamContext::SetDefaultFileNameCallback(TextCallback callback, void* user) {
  defaultFileName_ = {callback, user};
}

CString* CContainerStreamContext::GetDefaultFileName() const {
  if (defaultFileName_.function) return defaultFileName_.function(defaultFileName_.user);
  return CContainerContext::GetDefaultFileName();
}

CString* CContainerStreamContext::GetFilePath(CString* name) const {
  if (!name) return nullptr;
  RObject<CString> directory(directoryPath_.function ? directoryPath_.function(directoryPath_.user) : nullptr);
  if (!directory) {
    name->Acquire();
    return name;
  }
  return CString::WithFormat("%s/%s", directory->GetChars(), name->GetChars());
}

bool CContainerStreamContext::Exists(CString* name) const {
  if (exists_.function) return exists_.function(exists_.user, name);
  RObject<CString> path(GetFilePath(name));
  return path && CFile::Exists(path);
}

Result CContainerStreamContext::Open(const Callback<OpenCallback>& callback, CString* name, CStream*& stream) {
  stream = nullptr;
  if (name) {
    AddFileName(name, false);
    Result result = OnOpenStream(name);
    if (result.Failed()) return result;
  }
  if (name && callback.function) {
    stream = callback.function(callback.user, name);
    if (!stream) return ResultFileNotFound("%s", name->GetChars());
  } else {
    if (!stream_) return ResultNullPointer("no stream");
    stream_->Acquire();
    stream = stream_;
  }
  AddStream(stream);
  return Result();
}

Result CContainerStreamContext::OpenStream(CContainerReader*, CString* name, CStream*& stream, bool) {
  return Open(openForRead_, name, stream);
}

Result CContainerStreamContext::OpenStream(CContainerWriter*, CString* name, CStream*& stream, bool) {
  return Open(openForWrite_, name, stream);
}

}  // namespace Corvane::Mox
