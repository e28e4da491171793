#include "System/Media/Container/Indexer.h"

#include "System/Media/Container/ContainerReader.h"

namespace Corvane::Mox {

CIndexer::CIndexer(CContainerReader* reader) : CObject(TypeCode), reader_(reader) {
  if (reader_) reader_->Acquire();
}

CIndexer::~CIndexer() {
  End();
  if (reader_) reader_->Release();
}

Result CIndexer::Begin(bool) {
  if (started_) return ResultFalse();
  if (!reader_) return ResultNullPointer();
  Result result = reader_->BeginIndex();
  if (result.Failed()) return result;
  started_ = true;
  return Result();
}

Result CIndexer::End() {
  if (!started_) return ResultFalse();
  started_ = false;
  return reader_->EndIndex();
}

}  // namespace Corvane::Mox
