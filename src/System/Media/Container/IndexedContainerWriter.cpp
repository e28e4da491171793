#include "System/Media/Container/IndexedContainerWriter.h"

#include "System/Media/Container/ContainerContext.h"
#include "System/Media/Container/ContainerIndex.h"
#include "System/Text.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

CIndexedContainerWriter::CIndexedContainerWriter(unsigned int componentCode)
    : CContainerWriter(componentCode), index_(nullptr) {}

CIndexedContainerWriter::~CIndexedContainerWriter() {
  if (index_) {
    index_->End();
    index_->Release();
  }
}

Result CIndexedContainerWriter::StartIndex(CString* path) {
  RObject<CContainerIndex> index(new CContainerIndex());
  Result result = index->Save(path);
  if (result.Succeeded()) index_ = index.Detach();
  return result;
}

Result CIndexedContainerWriter::OpenStream(CStream*& stream) {
  stream = nullptr;
  RObject<CString> explicitPath;
  if (!index_ && GetProperty(ContainerProperty::ContainerWriter::IndexFilePath, explicitPath.Out()).Succeeded() &&
      explicitPath) {
    Result result = StartIndex(explicitPath);
    if (result.Failed()) return result;
  }
  bool create = false;
  if (!index_ && GetProperty(ContainerProperty::ContainerWriter::CreateIndex, create).Succeeded() && create &&
      GetContext()) {
    RObject<CString> path(GetContext()->GetIndexPath());
    if (!path) {
      RObject<CString> name(GetContext()->GetDefaultFileName());
      RObject<CString> full(name ? GetContext()->GetFilePath(name) : nullptr);
      if (full) path = CString::WithFormat("%s.~index", full->GetChars());
    }
    // An index next to the output is a convenience: without it the output
    // is still written.
    if (path) StartIndex(path);
  }
  return CContainerWriter::OpenStream(stream);
}

}  // namespace Corvane::Mox
