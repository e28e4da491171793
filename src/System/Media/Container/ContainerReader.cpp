#include "System/Media/Container/ContainerReader.h"

#include "System/Media/Inventory/ComponentInventory.h"

namespace Corvane::Mox {

CContainerReader* CContainerReaderInventory::Create(unsigned int type) {
  return CFamilyInventory<CContainerReader>::CreateAvailable(type);
}

CContainerReader* CContainerReader::Create(CString* path) {
  // Choosing a reader means asking each registered reader to judge the
  // file's content; readers cannot do that yet, so none is chosen (taking the
  // first available one would open a file with a reader of the wrong kind).
  (void)path;
  return nullptr;
}

CContainerReader* CContainerReader::Create(CString* path, unsigned int type) {
  CContainerReader* reader = CContainerReaderInventory::Create(type);
  if (reader && path) reader->SetProperty("file", path);
  return reader;
}

}  // namespace Corvane::Mox

namespace Corvane::Mox {

Result CContainerReader::ReadVideoSample(int, CVideoSample*& sample) {
  sample = nullptr;
  return ResultNotImplemented();
}

Result CContainerReader::ReadAudioSample(int, CAudioSample*& sample) {
  sample = nullptr;
  return ResultNotImplemented();
}

Result CContainerReader::ReadSubtitleSample(int, CSubtitleSample*& sample) {
  sample = nullptr;
  return ResultNotImplemented();
}

}  // namespace Corvane::Mox
