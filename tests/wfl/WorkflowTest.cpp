// The workflow runtime with components made by the tests: readers that count
// out samples (or never end), pass-through and failing filters, and writers
// that record what they receive. Waits are bounded by deadlines so that a
// broken runtime fails a test instead of hanging the run.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

#include "System/Collections/List.h"
#include "System/LeakCheckedTest.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Filter/Converters.h"
#include "System/Media/MemoryDataReference.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/Media/Video/VideoSample.h"
#include "wfl/ContainerWriterTopologyNode.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/ReaderTopologyNode.h"
#include "wfl/Topology.h"
#include "wfl/Workflow.h"
#include "WorkflowTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;
using namespace WorkflowTestSupport;

namespace {

class WorkflowTest : public LeakCheckedTest {
 protected:
  void SetUp() override {
    LeakCheckedTest::SetUp();
    topology_ = new CTopology();
  }
  void TearDown() override {
    topology_ = nullptr;
    LeakCheckedTest::TearDown();
  }

  template <class Node>
  Node* Add(Node* node) {
    RObject<Node> held(node);
    topology_->AddNode(node);
    return node;
  }
  CTopologyNode* AddFilter(int failAt = 0) {
    RObject<CPassFilter> filter(new CPassFilter(failAt));
    return Add(new CMediaFilterTopologyNode(filter));
  }
  CContainerWriterTopologyNode* AddWriter(RObject<CRecordingWriter>& writer) {
    writer = new CRecordingWriter();
    return Add(new CContainerWriterTopologyNode(writer));
  }

  // Waits (at most 20 s) for the run to end or abort.
  static bool Finish(CWorkflow* workflow) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!workflow->WaitForCompletion(50) && !workflow->IsAborted())
      if (std::chrono::steady_clock::now() > deadline) return false;
    return true;
  }

  RObject<CTopology> topology_;
};

std::vector<long long> Times(int count) {
  std::vector<long long> times;
  for (int i = 0; i < count; ++i) times.push_back(i);
  return times;
}

TEST_F(WorkflowTest, WithoutReadersTheRunIsOverAtOnce) {
  RObject<CRecordingWriter> writer;
  AddWriter(writer);
  RObject<CWorkflow> workflow(new CWorkflow(topology_));
  EXPECT_EQ(workflow->GetNodeCount(), 0);
  ASSERT_TRUE(workflow->Begin().Succeeded());
  EXPECT_TRUE(workflow->IsEndOfStream());
  EXPECT_TRUE(workflow->WaitForCompletion(0));
  EXPECT_EQ(workflow->GetProgress(), 0.0f);
  EXPECT_TRUE(workflow->End().Succeeded());
  EXPECT_TRUE(workflow->GetResult().Succeeded());
  EXPECT_EQ(writer->begun.load(), 0) << "a writer no reader feeds is not part of the run";
}

TEST_F(WorkflowTest, ReaderThroughFilterIntoWriterDeliversEverySampleInOrder) {
  auto* reader = Add(new CCountingReaderNode(1, 40));
  CTopologyNode* filter = AddFilter();
  RObject<CRecordingWriter> writer;
  CTopologyNode* sink = AddWriter(writer);
  topology_->Connect(reader, 0, filter, nullptr);
  topology_->Connect(filter, 0, sink, nullptr);

  RObject<CWorkflow> workflow(new CWorkflow(topology_));
  EXPECT_EQ(workflow->GetNodeCount(), 3);
  ASSERT_TRUE(workflow->Begin().Succeeded());
  ASSERT_TRUE(Finish(workflow)) << "the run did not end";
  EXPECT_TRUE(workflow->IsEndOfStream());
  EXPECT_FLOAT_EQ(workflow->GetProgress(), 1.0f);
  EXPECT_FLOAT_EQ(workflow->GetDuration(), 40.0f / TimeScale);
  EXPECT_FLOAT_EQ(workflow->GetTime(), 40.0f / TimeScale);
  EXPECT_EQ(workflow->GetHeartbeat(), 0.0f) << "the writer has no outputs and pins the smallest heartbeat";
  ASSERT_TRUE(workflow->End().Succeeded());
  EXPECT_TRUE(workflow->GetResult().Succeeded());
  EXPECT_EQ(writer->Track(0), Times(40));
  EXPECT_EQ(writer->begun.load(), 1);
  EXPECT_EQ(writer->ended.load(), 1);
}

TEST_F(WorkflowTest, TwoWritersOfOneOutputEachGetEverySample) {
  auto* reader = Add(new CCountingReaderNode(1, 25));
  CTopologyNode* filter = AddFilter();
  RObject<CRecordingWriter> first, second;
  CTopologyNode* a = AddWriter(first);
  CTopologyNode* b = AddWriter(second);
  topology_->Connect(reader, 0, filter, nullptr);
  topology_->Connect(filter, 0, a, nullptr);
  topology_->Connect(filter, 0, b, nullptr);
  RObject<CWorkflow> workflow(new CWorkflow(topology_));
  ASSERT_TRUE(workflow->Begin().Succeeded());
  ASSERT_TRUE(Finish(workflow));
  ASSERT_TRUE(workflow->End().Succeeded());
  EXPECT_EQ(first->Track(0), Times(25));
  EXPECT_EQ(second->Track(0), Times(25));
}

TEST_F(WorkflowTest, AnOutputWithoutConnectionsIsStillReadToItsEnd) {
  auto* reader = Add(new CCountingReaderNode(2, 12));
  RObject<CRecordingWriter> writer;
  topology_->Connect(reader, 0, AddWriter(writer), nullptr);
  RObject<CWorkflow> workflow(new CWorkflow(topology_));
  ASSERT_TRUE(workflow->Begin().Succeeded());
  ASSERT_TRUE(Finish(workflow));
  ASSERT_TRUE(workflow->End().Succeeded());
  EXPECT_EQ(writer->Track(0), Times(12));
  EXPECT_EQ(reader->GetReads(1), 13) << "every sample and the end of the unconnected output";
}

TEST_F(WorkflowTest, AFailingFilterAbortsTheRunWithItsError) {
  auto* reader = Add(new CCountingReaderNode(1, 0, /*endless=*/true));
  CTopologyNode* filter = AddFilter(/*failAt=*/3);
  RObject<CRecordingWriter> writer;
  topology_->Connect(reader, 0, filter, nullptr);
  topology_->Connect(filter, 0, AddWriter(writer), nullptr);
  RObject<CWorkflow> workflow(new CWorkflow(topology_));
  ASSERT_TRUE(workflow->Begin().Succeeded());
  ASSERT_TRUE(Finish(workflow)) << "the run neither ended nor aborted";
  EXPECT_TRUE(workflow->IsAborted());
  workflow->End();  // joins every thread: an endless reader must have been stopped
  Result result = workflow->GetResult();
  EXPECT_TRUE(result.Failed());
  EXPECT_EQ(result.GetType(), ResultIOError().GetType());
  EXPECT_STREQ(result.GetDetails(), "sample 3 could not be converted");
  EXPECT_EQ(writer->Track(0), Times(2)) << "the samples before the failure were written";
  EXPECT_EQ(writer->ended.load(), 1) << "the writer still finishes its file";
}

TEST_F(WorkflowTest, StopEndsAnEndlessReaderAfterWhatItReadAhead) {
  auto* reader = Add(new CCountingReaderNode(1, 0, /*endless=*/true));
  RObject<CRecordingWriter> writer;
  topology_->Connect(reader, 0, AddWriter(writer), nullptr);
  RObject<CWorkflow> workflow(new CWorkflow(topology_));
  ASSERT_TRUE(workflow->Begin().Succeeded());
  EXPECT_FALSE(workflow->WaitForCompletion(0));
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (writer->Track(0).size() < 50 && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  workflow->Stop();
  ASSERT_TRUE(Finish(workflow));
  EXPECT_TRUE(workflow->IsEndOfStream());
  EXPECT_FALSE(workflow->IsAborted());
  ASSERT_TRUE(workflow->End().Succeeded());
  const std::vector<long long> written = writer->Track(0);
  EXPECT_GE(written.size(), 50u);
  EXPECT_EQ(written, Times(static_cast<int>(written.size()))) << "nothing skipped or repeated";
  EXPECT_EQ(writer->ended.load(), 1);
}

}  // namespace
