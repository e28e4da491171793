#include "System/Media/Container/Indexer.h"

#include "System/Media/Container/ContainerReader.h"

namespace Corvane::Mox {

CIndexer::CIndexer(CContainerReader* reader) : CObject(TypeCode), reader_(reader) {
  if (reader_) reader_->Acquire();
}

CIndexer::~CIndexer() {
  if (reader_) reader_->Release();
}

}  // namespace Corvane::Mox
