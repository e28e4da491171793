#include "System/PropertiesXmlSupport.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <mutex>

namespace Corvane::Mox::PropertiesXml {

struct ErrorCapture::Saved {
  xmlStructuredErrorFunc structured;
  void* structuredContext;
  xmlGenericErrorFunc generic;
  void* genericContext;
};

namespace {

void OnStructuredError(void* context, xmlErrorPtr error) {
  if (error && error->message) static_cast<ErrorCapture*>(context)->Report(error->message);
}

// Unstructured reports carry printf arguments; the structured report of the
// same fault, when there is one, gives the message.
void OnGenericError(void*, const char*, ...) {}

}  // namespace

ErrorCapture::ErrorCapture() {
  // libxml2 wants its parser initialised once before threads use it.
  static std::once_flag initialized;
  std::call_once(initialized, [] { xmlInitParser(); });
  saved_.reset(new Saved{xmlStructuredError, xmlStructuredErrorContext, xmlGenericError, xmlGenericErrorContext});
  xmlSetStructuredErrorFunc(this, &OnStructuredError);
  xmlSetGenericErrorFunc(this, &OnGenericError);
}

ErrorCapture::~ErrorCapture() {
  xmlSetStructuredErrorFunc(saved_->structuredContext, saved_->structured);
  xmlSetGenericErrorFunc(saved_->genericContext, saved_->generic);
}

void ErrorCapture::Report(const char* message) {
  if (!message_.empty()) return;
  message_ = message;
  while (!message_.empty() && (message_.back() == '\n' || message_.back() == '\r')) message_.pop_back();
  if (message_.empty()) message_ = "XML error";
}

}  // namespace Corvane::Mox::PropertiesXml
