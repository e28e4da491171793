// The stall warning of mox's progress reporter, driven by a real workflow
// whose filter holds its samples until the test lets them go, so that a
// stall is certain instead of hoped for from a slow disk.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <string>

#include "ProgressReporter.h"
#include "wfl/ContainerWriterTopologyNode.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/Topology.h"
#include "wfl/Workflow.h"
#include "wfl/WorkflowNode.h"
#include "wfl/WorkflowTestSupport.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;
using namespace WorkflowTestSupport;
using MoxTool::ProgressMode;
using MoxTool::ProgressReporter;

namespace {

// Passes pictures on, but holds the samples listed in `holdAt` (1-based)
// until LetGo; a forgotten release ends the hold after 20 s so a broken
// test cannot hang the run.
class CHoldingFilter : public CPassFilter {
 public:
  CHoldingFilter(int firstHold, int secondHold) : first_(firstHold), second_(secondHold) {}
  Result Convert(CVideoSample* sample, CVideoSample*& converted) override {
    const int n = ++seen_;
    if (n == first_ || n == second_) {
      std::unique_lock<std::mutex> guard(lock_);
      holding_ = n;
      changed_.notify_all();
      changed_.wait_for(guard, std::chrono::seconds(20), [&] { return released_ >= n; });
    }
    return CPassFilter::Convert(sample, converted);
  }
  // Waits until the filter holds sample n.
  bool WaitUntilHolding(int n) {
    std::unique_lock<std::mutex> guard(lock_);
    return changed_.wait_for(guard, std::chrono::seconds(20), [&] { return holding_ == n; });
  }
  void LetGo(int n) {
    std::lock_guard<std::mutex> guard(lock_);
    released_ = n;
    changed_.notify_all();
  }

 private:
  int first_, second_;
  int seen_ = 0;
  std::mutex lock_;
  std::condition_variable changed_;
  int holding_ = 0, released_ = 0;
};

// Everything the reporter printed so far.
std::string Printed(std::FILE* out) {
  std::fflush(out);
  const long size = std::ftell(out);
  std::string text(static_cast<size_t>(size), '\0');
  std::rewind(out);
  const size_t got = std::fread(text.data(), 1, text.size(), out);
  text.resize(got);
  std::fseek(out, 0, SEEK_END);
  return text;
}

size_t Count(const std::string& text, const std::string& what) {
  size_t count = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++count;
  return count;
}

class StallWarningTest : public ::testing::Test {
 protected:
  void SetUp() override {
    out_ = std::tmpfile();
    ASSERT_NE(out_, nullptr);
    topology_ = new CTopology();
    RObject<CTopologyNode> reader(new CCountingReaderNode(1, 8));
    reader->SetLabel("source");
    holder_ = new CHoldingFilter(2, 5);
    RObject<CTopologyNode> filter(new CMediaFilterTopologyNode(holder_));
    filter->SetLabel("holder");
    writer_ = new CRecordingWriter();
    RObject<CTopologyNode> sink(new CContainerWriterTopologyNode(writer_));
    for (CTopologyNode* node : {reader.Get(), filter.Get(), sink.Get()}) topology_->AddNode(node);
    topology_->Connect(reader, 0, filter, nullptr);
    topology_->Connect(filter, 0, sink, nullptr);
    workflow_ = new CWorkflow(topology_);
    ASSERT_TRUE(workflow_->Begin().Succeeded());
  }
  void TearDown() override {
    if (holder_) holder_->LetGo(1000);
    if (workflow_) workflow_->End();
    if (out_) std::fclose(out_);
  }
  // Lets the reporter look (as mox does ten times a second) until the
  // largest reader or filter heartbeat passes `seconds`.
  void UpdateUntilStalledFor(ProgressReporter& reporter, double seconds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    for (;;) {
      reporter.Update(*workflow_);
      double stalest = 0;
      for (int i = 0; i < workflow_->GetNodeCount(); ++i)
        stalest = std::max(stalest, static_cast<double>(workflow_->GetNode(i)->GetHeartbeat()));
      if (stalest > seconds || std::chrono::steady_clock::now() > deadline) break;
      workflow_->WaitForCompletion(10);
    }
    reporter.Update(*workflow_);
  }
  bool RunToTheEnd(ProgressReporter& reporter) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!workflow_->WaitForCompletion(10) && !workflow_->IsAborted()) {
      reporter.Update(*workflow_);
      if (std::chrono::steady_clock::now() > deadline) return false;
    }
    reporter.Finish(*workflow_);
    return true;
  }

  std::FILE* out_ = nullptr;
  RObject<CTopology> topology_;
  RObject<CHoldingFilter> holder_;
  RObject<CRecordingWriter> writer_;
  RObject<CWorkflow> workflow_;
};

TEST_F(StallWarningTest, AStalledNodeIsNamedOnceWithItsSilenceAndTheJobGoesOn) {
  ProgressReporter reporter(ProgressMode::None, out_, 0.05);
  ASSERT_TRUE(holder_->WaitUntilHolding(2));
  UpdateUntilStalledFor(reporter, 0.2);
  const std::string first = Printed(out_);
  EXPECT_EQ(Count(first, "mox: warning: "), 1u) << first;
  const bool named = first.find("'holder' has delivered nothing for ") != std::string::npos ||
                     first.find("'source' has delivered nothing for ") != std::string::npos;
  EXPECT_TRUE(named) << first;
  const double silence = std::atof(first.substr(first.find(" for ") + 5).c_str());
  EXPECT_GT(silence, 0.05) << first;

  // A second stall in the same run is not reported again.
  holder_->LetGo(2);
  ASSERT_TRUE(holder_->WaitUntilHolding(5));
  UpdateUntilStalledFor(reporter, 0.2);
  holder_->LetGo(5);
  ASSERT_TRUE(RunToTheEnd(reporter));
  EXPECT_EQ(Count(Printed(out_), "mox: warning: "), 1u) << Printed(out_);
  EXPECT_EQ(writer_->Track(0).size(), 8u);
}

TEST_F(StallWarningTest, ZeroOrAShortSilenceBelowTheLimitWarnsNothing) {
  ProgressReporter never(ProgressMode::None, out_, 0);
  ProgressReporter patient(ProgressMode::None, out_, 3600);
  ASSERT_TRUE(holder_->WaitUntilHolding(2));
  for (ProgressReporter* reporter : {&never, &patient}) UpdateUntilStalledFor(*reporter, 0.2);
  holder_->LetGo(1000);
  ASSERT_TRUE(RunToTheEnd(never));
  EXPECT_EQ(Printed(out_), "");
}

}  // namespace
