#pragma once
// Names and error handling shared by the XML writer and reader of property
// bags (internal to the library; libxml2 stays out of this header).

#include <memory>
#include <string>

namespace Corvane::Mox::PropertiesXml {

// The library's namespace for "container" documents.
constexpr const char* NamespaceUri = "urn:corvane:mox:properties";
constexpr const char* XsiUri = "http://www.w3.org/2001/XMLSchema-instance";
constexpr const char* XsUri = "http://www.w3.org/2001/XMLSchema";
constexpr const char* RootName = "container";
constexpr const char* ItemName = "item";
// Keys that are not XML names travel as <property name="key">.
constexpr const char* PropertyName = "property";
constexpr const char* NameAttribute = "name";
constexpr const char* AnnotationAttribute = "annotation";

// While alive, routes libxml2's error reports on this thread here instead of
// to standard error, keeping the first message; the previous handlers come
// back on destruction. The first capture also initialises libxml2.
class ErrorCapture {
 public:
  ErrorCapture();
  ~ErrorCapture();
  ErrorCapture(const ErrorCapture&) = delete;
  ErrorCapture& operator=(const ErrorCapture&) = delete;

  // The first error reported, without its line end; empty when none.
  const std::string& GetMessage() const { return message_; }
  void Report(const char* message);

 private:
  struct Saved;
  std::unique_ptr<Saved> saved_;
  std::string message_;
};

}  // namespace Corvane::Mox::PropertiesXml
