// The runtime's own cost per sample: a reader node counting out tiny samples
// through two pass-through filters into a writer that only records them, so
// that nearly all the time is the workflow's threads, queues and hand-overs.
#include <benchmark/benchmark.h>

#include "System/Threading/Thread.h"
#include "wfl/ContainerWriterTopologyNode.h"
#include "wfl/MediaFilterTopologyNode.h"
#include "wfl/Topology.h"
#include "wfl/Workflow.h"
#include "wfl/WorkflowTestSupport.h"  // from tests/

using namespace WorkflowTestSupport;

namespace {

template <class Node>
Node* Add(CTopology* topology, Node* node) {
  RObject<Node> held(node);
  topology->AddNode(node);
  return node;
}

void BM_WorkflowReaderTwoFiltersWriter(benchmark::State& state) {
  const int samples = static_cast<int>(state.range(0));
  for (auto _ : state) {
    RObject<CTopology> topology(new CTopology());
    auto* reader = Add(topology.Get(), new CCountingReaderNode(1, samples));
    RObject<CPassFilter> first(new CPassFilter()), second(new CPassFilter());
    auto* a = Add(topology.Get(), new CMediaFilterTopologyNode(first));
    auto* b = Add(topology.Get(), new CMediaFilterTopologyNode(second));
    RObject<CRecordingWriter> writer(new CRecordingWriter());
    auto* sink = Add(topology.Get(), new CContainerWriterTopologyNode(writer));
    topology->Connect(reader, 0, a, nullptr);
    topology->Connect(a, 0, b, nullptr);
    topology->Connect(b, 0, sink, nullptr);
    RObject<CWorkflow> workflow(new CWorkflow(topology));
    workflow->Begin();
    while (!workflow->WaitForCompletion(10) && !workflow->IsAborted()) {
    }
    workflow->End();
    if (static_cast<int>(writer->Track(0).size()) != samples) state.SkipWithError("samples were lost");
  }
  state.SetItemsProcessed(state.iterations() * samples);
}
BENCHMARK(BM_WorkflowReaderTwoFiltersWriter)->Arg(20000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
