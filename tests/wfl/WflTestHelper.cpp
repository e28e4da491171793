#include "WflTestHelper.h"

#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Text.h"
#include "wfl/AstNode.h"
#include "wfl/AstStatements.h"
#include "wfl/ComponentValue.h"
#include "wfl/SymbolDictionary.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::WFL;

std::string WflTest::printed_;

void WflTest::SetUpTestSuite() {
  // The component registries live for the whole process; fill them before
  // any test counts objects.
  EnsureLibraryComponents();
  CFamilyInventory<CVideoConverter>::GetFactory(0);
}

void WflTest::Capture(CString* text) { printed_ += text->GetChars(); }

void WflTest::SetUp() {
  LeakCheckedTest::SetUp();
  printed_.clear();
  CPrintStatement::callback = Capture;
  scope_ = new CAstNode::CAutoScope();
}

void WflTest::TearDown() {
  delete static_cast<CAstNode::CAutoScope*>(scope_);
  CSymbolDictionary::ClearAll();
  CAstNode::ReleaseSymbolTable();
  CAstNode::ReleaseFunctionTable();
  CComponentValue::ReleaseComponentGraph();
  CPrintStatement::callback = CPrintStatement::DefaultCallback;
  LeakCheckedTest::TearDown();
}

std::string WflTest::Run(const char* script) {
  printed_.clear();
  try {
    runner_.Run(script);
  } catch (const Result& result) {
    ADD_FAILURE() << "script raised " << Format(result) << "\n" << script;
  }
  return printed_;
}

ResultParserError WflTest::RunFailing(const char* script) {
  printed_.clear();
  try {
    runner_.Run(script);
  } catch (const ResultParserError& error) {
    return error;
  } catch (const Result& result) {
    ADD_FAILURE() << "script raised a result that is no WFL error: " << Format(result) << "\n" << script;
    return ResultParserError(nullptr, "unexpected");
  }
  ADD_FAILURE() << "script did not fail: " << script;
  return ResultParserError(nullptr, "no error");
}

Result WflTest::RunRaising(const char* script) {
  printed_.clear();
  try {
    runner_.Run(script);
  } catch (const Result& result) {
    return result;
  }
  ADD_FAILURE() << "script did not fail: " << script;
  return Result();
}

std::string WflTest::Print(const char* expression) { return Run(("print(" + std::string(expression) + ");").c_str()); }

std::string WflTest::Format(const Result& result) {
  RObject<CString> text(result.FormatErrorMessage());
  return text->GetChars();
}
