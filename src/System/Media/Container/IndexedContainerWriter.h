#pragma once
// CIndexedContainerWriter: a writer that can keep a sidecar index of what it
// wrote (IndexFilePath, or CreateIndex next to the output as
// "<file>.~index").

#include "System/Media/Container/ContainerWriter.h"

namespace Corvane::Mox {

class CContainerIndex;

class CIndexedContainerWriter : public CContainerWriter {
 public:
  explicit CIndexedContainerWriter(unsigned int componentCode);
  ~CIndexedContainerWriter() override;

  using CContainerWriter::OpenStream;
  // Starts the index when asked, then opens the output.
  Result OpenStream(CStream*& stream) override;
  CContainerIndex* GetIndex() const { return index_; }

 private:
  Result StartIndex(CString* path);

  CContainerIndex* index_;
};

}  // namespace Corvane::Mox
