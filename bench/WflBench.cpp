// WFL throughput: a script of many small statements parsed and evaluated
// from text, as `mox run` does, and a tight loop that measures evaluation
// alone. Items are statements (or loop iterations) per second.
#include <benchmark/benchmark.h>

#include <string>

#include "System/Text.h"
#include "wfl/Parser.h"
#include "wfl/ParserTopology.h"
#include "wfl/Topology.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

void Discard(CString*) {}

std::string StraightLineScript(int statements) {
  std::string script = "var total = 0; var name = 'clip';\n";
  for (int i = 0; i < statements; ++i) {
    script += "total += " + std::to_string(i) + " * 2 + (name == 'clip' ? 1 : 0); var v" + std::to_string(i) +
              " = {w: 1920, h: 1080, tc: 01:00:00;00@29.97 + " + std::to_string(i) + "};\n";
  }
  return script + "print(total);\n";
}

void RunScript(benchmark::State& state, const std::string& script, long long items) {
  CParser::SetLogCallback(Discard);
  RObject<CString> text(CString::WithString(script.c_str()));
  for (auto _ : state) {
    RObject<CParser> parser(new CParser());
    RObject<CTopology> topology(parser->ParseString(text, nullptr));
    benchmark::DoNotOptimize(topology.Get());
  }
  state.SetItemsProcessed(state.iterations() * items);
}

void BM_ParseAndEvaluateStatements(benchmark::State& state) {
  const int statements = static_cast<int>(state.range(0));
  RunScript(state, StraightLineScript(statements), statements * 2LL);
}
BENCHMARK(BM_ParseAndEvaluateStatements)->Arg(100)->Arg(2000);

void BM_EvaluateLoop(benchmark::State& state) {
  const long long iterations = state.range(0);
  const std::string script = "var s = 0; for (var i = 0; i < " + std::to_string(iterations) +
                             "; i++) { s += i % 7; } print(s);";
  RunScript(state, script, iterations);
}
BENCHMARK(BM_EvaluateLoop)->Arg(100000);

}  // namespace
