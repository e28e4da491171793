#pragma once
// CIndexer: the index front of a container reader. Scripts and topologies
// hold readers through it. Begin starts the reader's indexing, so that its
// tracks are known when Begin returns, and collects every track's samples
// (timing, flags and data references, no essence) as the reader delivers
// them; End stops and joins.

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

  // Starts indexing once (ResultFalse when already started). With
  // `threaded` the samples are collected on an index thread of its own;
  // otherwise Begin collects them all before returning.
  Result Begin(bool threaded);
  // Stops indexing and joins the index thread; ResultFalse when not started.
  Result End();
  bool IsStarted() const { return started_; }

 private:
  CContainerReader* reader_;
  bool started_ = false;
};

}  // namespace Corvane::Mox
