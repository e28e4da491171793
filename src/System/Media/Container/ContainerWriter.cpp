#include "System/Media/Container/ContainerWriter.h"

#include <strings.h>

#include <cstring>

#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Text.h"

namespace Corvane::Mox {

CContainerWriter* CContainerWriter::Create(CString* path, unsigned int type) {
  CContainerWriter* writer = CFamilyInventory<CContainerWriter>::CreateAvailable(type);
  if (writer && path) writer->SetProperty("file", path);
  return writer;
}

namespace {

// The text after the last dot of the file name, or null.
const char* Extension(const char* path) {
  const char* slash = std::strrchr(path, '/');
  const char* dot = std::strrchr(slash ? slash : path, '.');
  return dot && dot[1] ? dot + 1 : nullptr;
}

// The first registered writer one of whose format's extensions matches.
unsigned int FindWriterByExtension(const char* extension) {
  for (CComponentFactory<CContainerWriter>* factory : *CFamilyInventory<CContainerWriter>::GetFactories()) {
    for (int i = 0;; ++i) {
      const char* candidate = ContainerFormat::GetFileExtension(factory->GetCode(), i);
      if (!candidate) break;
      if (!strcasecmp(candidate, extension)) return factory->GetCode();
    }
  }
  return 0;
}

}  // namespace

unsigned int GetContainerWriterType(CString* path) {
  if (!path) return 0;
  const char* extension = Extension(path->GetChars());
  if (!extension) return 0;
  if (!strcasecmp(extension, "ts")) return FourCC("m2ts");
  if (!strcasecmp(extension, "mov")) return FourCC("mov ");
  if (!strcasecmp(extension, "mp4")) return FourCC("mp4 ");
  return FindWriterByExtension(extension);
}

}  // namespace Corvane::Mox

namespace Corvane::Mox {

Result CContainerWriter::AddVideoMedia(CVideoProperties*) { return ResultNotSupported("video media is not supported"); }
Result CContainerWriter::AddAudioMedia(CAudioProperties*) { return ResultNotSupported("audio media is not supported"); }
Result CContainerWriter::AddSubtitleMedia(CSubtitleProperties*) {
  return ResultNotSupported("subtitle media is not supported");
}
Result CContainerWriter::WriteVideoSample(int, CVideoSample*) { return ResultNotSupported("video media is not supported"); }
Result CContainerWriter::WriteAudioSample(int, CAudioSample*) { return ResultNotSupported("audio media is not supported"); }
Result CContainerWriter::WriteSubtitleSample(int, CSubtitleSample*) {
  return ResultNotSupported("subtitle media is not supported");
}

}  // namespace Corvane::Mox
