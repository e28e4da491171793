// How readers come into being: by type through the registry, or by probing
// a stream with every registered reader.

#include <strings.h>

#include <cstring>

#include "System/Console.h"
#include "System/IO/FileDescriptorStream.h"
#include "System/IO/Stream.h"
#include "System/Media/Container/ContainerDirectoryContext.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerStreamContext.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// The schemes of remote files. Their context (HTTP range reading, S3) is not
// part of this build, so such paths fail clearly instead of being taken for
// local files.
bool HasRemoteScheme(const char* path) {
  for (const char* scheme : {"s3://", "gs3://", "http://", "https://"}) {
    if (!strncasecmp(path, scheme, std::strlen(scheme))) return true;
  }
  return false;
}

// Keeps the path as the "file" property: scripts show it as a member.
void RememberPath(CContainerReader* reader, CString* path) {
  if (reader && path) reader->SetProperty("file", path);
}

}  // namespace

CContainerReader* CContainerReaderInventory::Create(unsigned int type) {
  return CFamilyInventory<CContainerReader>::CreateAvailable(type);
}

CContainerReader* CContainerReaderInventory::Create(CStream* stream) {
  if (!stream) return nullptr;
  RObject<CContainerReader> best;
  int bestScore = 0;
  for (CComponentFactory<CContainerReader>* factory : *CFamilyInventory<CContainerReader>::GetFactories()) {
    if (!factory->IsAvailable()) continue;
    RObject<CContainerReader> reader(factory->CreateInstance());
    if (!reader) continue;
    if (stream->Seek(0, SeekOrigin::Begin, nullptr).Failed()) return nullptr;
    int score = 0;
    try {
      score = reader->Validate(stream);
    } catch (const Result& failure) {
      score = failure.GetResultCode() < 0 ? failure.GetResultCode() : 0;
    }
    if (score > bestScore) {
      bestScore = score;
      best = reader;
    }
    if (score >= 256) break;
  }
  return best.Detach();
}

CContainerContext* CContainerReader::CreateContext(CString* path) {
  if (!path) return nullptr;
  if (HasRemoteScheme(path->GetChars())) {
    MOX_LOG(1, "remote files are not supported in this build: '%s'\n", path->GetChars());
    return nullptr;
  }
  return CContainerDirectoryContext::Create(path);
}

CContainerReader* CContainerReader::Create(CContainerContext* context) {
  if (!context) return nullptr;
  RObject<CStream> stream;
  if (context->IsType(CContainerStreamContext::TypeCode)) {
    stream = static_cast<CContainerStreamContext*>(context)->GetStream();
    if (stream) stream->Acquire();
  } else {
    RObject<CString> name(context->GetDefaultFileName());
    RObject<CString> path(name ? context->GetFilePath(name) : nullptr);
    if (!path || context->OnOpenStream(path).Failed()) return nullptr;
    if (CFileDescriptorStream::Open(path, FileMode::Read, stream.Out()).Failed()) return nullptr;
  }
  if (!stream) return nullptr;
  RObject<CContainerReader> reader(CContainerReaderInventory::Create(stream.Get()));
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  if (reader) reader->SetContext(context);
  return reader.Detach();
}

CContainerReader* CContainerReader::Create(CString* path) {
  RObject<CContainerContext> context(CreateContext(path));
  CContainerReader* reader = Create(context.Get());
  RememberPath(reader, path);
  return reader;
}

CContainerReader* CContainerReader::Create(const char* path) {
  if (!path) return nullptr;
  RObject<CString> text(CString::WithString(path));
  return Create(text.Get());
}

CContainerReader* CContainerReader::Create(CString* directory, CString* fileName) {
  RObject<CContainerContext> context(CContainerDirectoryContext::Create(directory, fileName));
  return Create(context.Get());
}

CContainerReader* CContainerReader::Create(CString* path, OpenStreamCallback callback, void* user) {
  RObject<CContainerContext> context(CreateContext(path));
  if (!context) return nullptr;
  context->SetOpenStreamCallback(callback, user);
  CContainerReader* reader = Create(context.Get());
  RememberPath(reader, path);
  return reader;
}

CContainerReader* CContainerReader::Create(CString* path, unsigned int type) {
  RObject<CContainerContext> context(CreateContext(path));
  if (path && !context) return nullptr;
  CContainerReader* reader = context ? Create(context.Get(), type) : CContainerReaderInventory::Create(type);
  RememberPath(reader, path);
  return reader;
}

CContainerReader* CContainerReader::Create(CContainerContext* context, unsigned int type) {
  if (!context) return nullptr;
  CContainerReader* reader = CContainerReaderInventory::Create(type);
  if (reader) reader->SetContext(context);
  return reader;
}

}  // namespace Corvane::Mox
