#include "System/Xml/XmlSerialization.h"

#include <climits>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/Stream.h"
#include "System/Text.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"

namespace Corvane::Mox {

CXmlSerialization::CXmlSerialization(unsigned int type) : CObject(type) {}

Result CXmlSerialization::Write(CXmlDocument*) { return ResultNotImplemented("Write is not implemented"); }

Result CXmlSerialization::Read(CXmlElement* root) { return Parse(root); }

Result CXmlSerialization::Parse(CXmlElement*) { return ResultNotImplemented("Parse is not implemented"); }

Result CXmlSerialization::WriteDocument(CXmlDocument*& document) {
  document = CXmlDocument::Create();
  if (!document) return ResultNullPointer("no document");
  Result result = Write(document);
  if (result.Failed()) {
    document->Release();
    document = nullptr;
  }
  return result;
}

Result CXmlSerialization::Serialize(CString*& out, int options) {
  out = nullptr;
  RObject<CXmlDocument> document;
  Result result = WriteDocument(document.Out());
  if (result.Failed()) return result;
  return document->GetString(options, out);
}

Result CXmlSerialization::Serialize(CByteArray*& out, int options) {
  out = nullptr;
  RObject<CXmlDocument> document;
  Result result = WriteDocument(document.Out());
  if (result.Failed()) return result;
  out = document->GetBytes(options);
  if (!out) return ResultError("cannot save the XML document");
  return ResultOK();
}

Result CXmlSerialization::Serialize(CStream* stream, int options) {
  if (!stream) return ResultArgumentNull("stream must not be nullptr");
  RObject<CXmlDocument> document;
  Result result = WriteDocument(document.Out());
  if (result.Failed()) return result;
  return document->Save(stream, options);
}

Result CXmlSerialization::ReadDocument(CXmlDocument* document) {
  RObject<CXmlElement> root(document->GetRootElement());
  if (!root) return ResultFormatError("the XML document has no root element");
  return Read(root);
}

Result CXmlSerialization::Deserialize(CString* text) {
  RObject<CXmlDocument> document;
  Result result = CXmlDocument::CreateWithString(text, document.Out());
  if (result.Failed()) return result;
  return ReadDocument(document);
}

Result CXmlSerialization::Deserialize(CByteArray* bytes) {
  RObject<CXmlDocument> document;
  Result result = CXmlDocument::CreateWithBytes(bytes, document.Out());
  if (result.Failed()) return result;
  return ReadDocument(document);
}

Result CXmlSerialization::Deserialize(CStream* stream) {
  if (!stream) return ResultArgumentNull("stream must not be nullptr");
  std::vector<unsigned char> content;
  unsigned char buffer[16384];
  for (;;) {
    int read = 0;
    Result result = stream->Read(buffer, static_cast<int>(sizeof buffer), &read);
    if (read > 0) content.insert(content.end(), buffer, buffer + read);
    // The end of the stream ends the text; any other failure is the answer.
    if (result.Failed() && result.GetType() != ResultEndOfStream().GetType()) return result;
    if (read <= 0 || result.Failed()) break;
    if (content.size() > static_cast<std::size_t>(INT_MAX)) return ResultNotSupported("XML stream is too large");
  }
  RObject<CXmlDocument> document;
  const char* text = content.empty() ? "" : reinterpret_cast<const char*>(content.data());
  Result result = CXmlDocument::CreateWithText(text,
                                               static_cast<int>(content.size()), document.Out());
  if (result.Failed()) return result;
  return ReadDocument(document);
}

}  // namespace Corvane::Mox
