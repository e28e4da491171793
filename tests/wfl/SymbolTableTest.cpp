// The scope structures and the generic graph, used directly.
#include "WflTestHelper.h"

#include "System/Text.h"
#include "wfl/AstNode.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"
#include "System/Collections/WeightedDirectedGraph.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

namespace {

std::string Names(CSymbolDictionary* dictionary) {
  RObject<CList<CString>> names(dictionary->GetNames());
  std::string text;
  for (CString* name : *names) text += std::string(name->GetChars()) + ";";
  return text;
}

}  // namespace

TEST_F(WflTest, SymbolDictionaryKeepsInsertionOrder) {
  RObject<CSymbolDictionary> dictionary(new CSymbolDictionary());
  RObject<CSymbol> one(new CSymbol(1));
  RObject<CSymbol> two(new CSymbol(2));
  RObject<CSymbol> three(new CSymbol(3));
  dictionary->SetSymbol("b", one);
  dictionary->SetSymbol("a", two);
  dictionary->SetSymbol("b", three);  // replaces in place
  EXPECT_EQ(Names(dictionary), "b;a;");
  RObject<CSymbol> b(dictionary->GetSymbol("b"));
  EXPECT_EQ(b.Get(), three.Get());
  RObject<CList<CSymbol>> symbols(dictionary->GetSymbols());
  EXPECT_EQ(symbols->GetCount(), 2);
  EXPECT_TRUE(dictionary->RemoveSymbol("b").Succeeded());
  EXPECT_EQ(dictionary->RemoveSymbol("b").GetType(), 1u);  // absent: ResultFalse
  EXPECT_EQ(Names(dictionary), "a;");
  EXPECT_EQ(dictionary->GetSymbol("zz"), nullptr);
}

TEST_F(WflTest, ScopesAreSearchedInnermostFirst) {
  RObject<CSymbolDictionary> outer(new CSymbolDictionary());
  RObject<CSymbolDictionary> inner(new CSymbolDictionary());
  RObject<CSymbol> outerX(new CSymbol("outer"));
  RObject<CSymbol> innerX(new CSymbol("inner"));
  RObject<CSymbol> onlyOuter(new CSymbol(7));
  outer->SetSymbol("x", outerX);
  outer->SetSymbol("y", onlyOuter);
  inner->SetSymbol("x", innerX);
  {
    CAstNode::CAutoScope first(outer);
    CAstNode::CAutoScope second(inner);
    CSymbolTable* table = CAstNode::GetSymbolTable();
    RObject<CSymbol> x(table->FindSymbol("x"));
    RObject<CSymbol> y(table->FindSymbol("y"));
    EXPECT_EQ(x.Get(), innerX.Get());
    EXPECT_EQ(y.Get(), onlyOuter.Get());
    EXPECT_EQ(table->FindSymbol("nowhere"), nullptr);
    EXPECT_EQ(CAstNode::GetInnermostScope(), inner.Get());
    // Script code sees the pushed scopes too.
    EXPECT_EQ(Run("print(x); print(y);"), "inner7");
  }
  // The guards popped both scopes again.
  RObject<CSymbol> gone(CAstNode::GetSymbolTable()->FindSymbol("y"));
  EXPECT_EQ(gone.Get(), nullptr);
}

TEST_F(WflTest, GraphKeepsNodesAndEdgesInOrder) {
  RObject<CWeightedDirectedGraph<const CString>> graph(new CWeightedDirectedGraph<const CString>());
  RObject<CString> a(new CString("a"));
  RObject<CString> b(new CString("b"));
  RObject<CString> c(new CString("c"));
  EXPECT_TRUE(graph->AddNode(a).Succeeded());
  EXPECT_EQ(graph->AddNode(a).GetType(), 1u);  // no duplicates by identity
  graph->Connect(a, b, nullptr);
  graph->Connect(2.5f, a, c, b.Get());
  graph->Connect(b, c, nullptr);
  EXPECT_EQ(graph->GetNodes()->GetCount(), 3);
  EXPECT_EQ(graph->GetEdges()->GetCount(), 3);
  EXPECT_EQ(graph->GetOutputEdges(a)->GetCount(), 2);
  EXPECT_EQ(graph->GetInputEdges(c)->GetCount(), 2);
  EXPECT_EQ(graph->GetInputEdges(a)->GetCount(), 0);
  RObject<CString> stranger(new CString("a"));
  EXPECT_EQ(graph->GetOutputEdges(stranger)->GetCount(), 0);  // identity, not text
  RObject<CGraphEdge<const CString>> second;
  graph->GetOutputEdges(a)->Get(1, second.Out());
  EXPECT_EQ(second->GetWeight(), 2.5f);
  EXPECT_EQ(second->GetDestination(), c.Get());
  EXPECT_EQ(second->GetPayload(), b.Get());
}

TEST_F(WflTest, ReleasingTheStateBreaksSelfReferences) {
  Run("var o = {}; o.self = o; var p = [1]; p[1] = p;");
  EXPECT_GT(CSymbolDictionary::GetLiveCount(), 0);
  // TearDown releases everything; the leak check proves the cycles were broken.
}
