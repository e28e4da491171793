#include "System/Media/Container/ContainerDirectoryContext.h"

#include "System/Console.h"
#include "System/IO/Directory.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/IO/Path.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Text.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

CContainerDirectoryContext::CContainerDirectoryContext(CString* directory)
    : CContainerContext(TypeCode), directory_(directory) {
  if (directory_) directory_->Acquire();
}

CContainerDirectoryContext::CContainerDirectoryContext(const char* directory)
    : CContainerContext(TypeCode), directory_(CString::WithString(directory ? directory : ".")) {}

CContainerDirectoryContext::CContainerDirectoryContext(const wchar_t* directory)
    : CContainerContext(TypeCode), directory_(new CString(directory ? directory : L".")) {}

CContainerDirectoryContext::~CContainerDirectoryContext() {
  if (directory_) directory_->Release();
}

CContainerDirectoryContext* CContainerDirectoryContext::Create(CString* path) {
  if (!path) return nullptr;
  RObject<CString> file(CPath::GetFileName(path));
  if (!file || file->GetLength() == 0) return nullptr;
  RObject<CString> directory(CPath::GetDirectoryName(path));
  if (!directory) directory = CString::WithString(path->GetChars()[0] == '/' ? "/" : ".");
  return Create(directory, file);
}

CContainerDirectoryContext* CContainerDirectoryContext::Create(CString* directory, CString* fileName) {
  if (!directory || !fileName) return nullptr;
  auto* context = new CContainerDirectoryContext(directory);
  context->SetDefaultFileName(fileName);
  return context;
}

CString* CContainerDirectoryContext::GetDirectory() const {
  if (directory_) directory_->Acquire();
  return directory_;
}

CString* CContainerDirectoryContext::GetFilePath(CString* name) const {
  if (!name) return nullptr;
  const char* text = name->GetChars();
  if (CPath::IsPathRooted(name) || !directory_) {
    name->Acquire();
    return name;
  }
  const char* directory = directory_->GetChars();
  const int length = directory_->GetLength();
  const char last = length > 0 ? directory[length - 1] : '/';
  const bool joined = last == '/' || last == '\\' || last == ':' || text[0] == '/' || text[0] == '\\';
  RObject<CString> path(CString::WithFormat("%s%s%s", directory, joined ? "" : "/", text));
  if (path->GetLength() >= CPath::MaxPathLength) return nullptr;
  return path.Detach();
}

CString* CContainerDirectoryContext::ChooseName(CString* name) const {
  if (name) {
    name->Acquire();
    return name;
  }
  return GetDefaultFileName();
}

Result CContainerDirectoryContext::OpenStream(CContainerReader* reader, CString* name, CStream*& stream,
                                              bool buffered) {
  stream = nullptr;
  RObject<CString> chosen(ChooseName(name));
  if (!chosen) return ResultNullPointer("no file name to open");
  AddFileName(chosen, false);
  RObject<CString> path(GetFilePath(chosen));
  if (!path) return ResultPathNameTooLong("%s", chosen->GetChars());
  Result result = OnOpenStream(path);
  if (result.Failed()) return result;
  CStream* file = nullptr;
  result = CFileDescriptorStream::Open(path, FileMode::Read, file);
  if (result.Failed()) return result;
  if (reader && reader->GetReadTimeout() > 0) static_cast<CFileStream*>(file)->SetReadTimeout(reader->GetReadTimeout());
  const int capacity = reader ? reader->GetBufferCapacity() : CContainer::DefaultCacheSize;
  const int count = reader ? reader->GetBufferCount() : CContainer::DefaultCacheCount;
  stream = Buffer(file, capacity, count, buffered);
  AddStream(stream);
  return Result();
}

Result CContainerDirectoryContext::OpenStream(CContainerWriter* writer, CString* name, CStream*& stream,
                                              bool buffered) {
  stream = nullptr;
  RObject<CString> chosen(ChooseName(name));
  if (!chosen && writer) {
    RObject<CString> base(writer->GetName());
    RObject<CString> extension(writer->GetFileExtension());
    if (base && extension) chosen = CString::WithFormat("%s.%s", base->GetChars(), extension->GetChars());
  }
  if (!chosen) return ResultNullPointer("no file name to open");
  AddFileName(chosen, false);
  RObject<CString> path(GetFilePath(chosen));
  if (!path) return ResultPathNameTooLong("%s", chosen->GetChars());
  RObject<CString> parent(CPath::GetDirectoryName(path));
  if (parent && !CDirectory::Exists(parent) && CDirectory::Create(parent).Failed())
    MOX_LOG(1, "unable to create directory '%s'\n", parent->GetChars());
  Result result = OnOpenStream(path);
  if (result.Failed()) return result;
  CStream* file = nullptr;
  // The file streams have one creating write mode; a renamable stream is
  // opened the same way and renamed by its owner.
  result = CFileDescriptorStream::Open(path, FileMode::Write, file);
  if (result.Failed()) return result;
  const int capacity = writer ? writer->GetBufferCapacity() : CContainer::DefaultCacheSize;
  const int count = writer ? writer->GetBufferCount() : CContainer::DefaultCacheCount;
  stream = Buffer(file, capacity, count, buffered);
  AddStream(stream);
  return Result();
}

}  // namespace Corvane::Mox
