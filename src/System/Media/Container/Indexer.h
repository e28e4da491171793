#pragma once
// CIndexer: the index front of a container reader. Scripts and topologies
// hold readers through it; it answers the reader it indexes.

#include "System/Object.h"

namespace Corvane::Mox {

class CContainerReader;

class CIndexer : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("indx");

  // Keeps a reference to the reader.
  explicit CIndexer(CContainerReader* reader);
  ~CIndexer() override;

  CContainerReader* GetContainerReader() const { return reader_; }

 private:
  CContainerReader* reader_;
};

}  // namespace Corvane::Mox
