// Arbitrary bytes as a WFL script: lexing, parsing and evaluation must answer
// with output or a Result, never crash, hang or leak. Evaluation runs under a
// step budget so that an endless loop ends with a Result, prints go nowhere,
// and the whole interpreter state is released after every input: no symbol
// dictionary may outlive it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Result.h"
#include "wfl/AstNode.h"
#include "wfl/AstStatements.h"
#include "wfl/EvaluationBudget.h"
#include "wfl/ParserTopology.h"
#include "wfl/ScriptRunner.h"
#include "wfl/SymbolDictionary.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

void Discard(CString*) {}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  CPrintStatement::callback = Discard;
  CEvaluationBudget::SetLimit(20000);
  EnsureLibraryComponents();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > (1u << 16)) return 0;
  CEvaluationBudget::Reset();
  {
    CAstNode::CAutoScope scope;
    CScriptRunner runner;
    try {
      runner.Run(reinterpret_cast<const char*>(data), static_cast<int>(size));
    } catch (const Result&) {
      // Errors are an expected answer to arbitrary scripts.
    }
  }
  ReleaseInterpreterState();
  if (CSymbolDictionary::GetLiveCount() != 0) std::abort();
  return 0;
}
