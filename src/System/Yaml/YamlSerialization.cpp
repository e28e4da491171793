#include "System/Yaml/YamlSerialization.h"

#include <climits>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/Stream.h"
#include "System/Text.h"
#include "System/Yaml/YamlDocument.h"

namespace Corvane::Mox {

Result IYamlSerialization::Read(CYamlNode* node) { return Parse(node); }

Result IYamlSerialization::Parse(CYamlNode*) { return ResultNotImplemented("Parse is not implemented"); }

Result IYamlSerialization::Write(CYamlNode*) { return ResultNotImplemented("Write is not implemented"); }

Result IYamlSerialization::Write(CYamlDocument* document) { return Write(static_cast<CYamlNode*>(document)); }

Result IYamlSerialization::WriteDocument(CYamlDocument*& document) {
  RObject<CYamlDocument> created(CYamlDocument::Create());
  document = nullptr;
  Result result = Write(created.Get());
  if (result.Failed()) return result;
  document = created.Detach();
  return result;
}

CString* IYamlSerialization::GetString() {
  RObject<CYamlDocument> document;
  if (WriteDocument(document.Out()).Failed()) return nullptr;
  return document->GetString();
}

CByteArray* IYamlSerialization::GetBytes() {
  RObject<CYamlDocument> document;
  if (WriteDocument(document.Out()).Failed()) return nullptr;
  return document->GetBytes();
}

Result IYamlSerialization::Serialize(CStream* stream) {
  if (!stream) return ResultArgumentNull("stream must not be nullptr");
  RObject<CYamlDocument> document;
  Result result = WriteDocument(document.Out());
  if (result.Failed()) return result;
  RObject<CByteArray> bytes(document->GetBytes());
  return stream->Write(bytes.Get());
}

Result IYamlSerialization::Deserialize(CStream* stream) {
  if (!stream) return ResultArgumentNull("stream must not be nullptr");
  std::vector<char> content;
  unsigned char buffer[16384];
  for (;;) {
    int read = 0;
    Result result = stream->Read(buffer, static_cast<int>(sizeof buffer), &read);
    if (read > 0) content.insert(content.end(), buffer, buffer + read);
    // The end of the stream ends the text; any other failure is the answer.
    if (result.Failed() && result.GetType() != ResultEndOfStream().GetType()) return result;
    if (read <= 0 || result.Failed()) break;
    if (content.size() > static_cast<std::size_t>(INT_MAX)) return ResultNotSupported("YAML stream is too large");
  }
  RObject<CYamlDocument> document;
  Result result = CYamlDocument::CreateWithText(content.empty() ? "" : content.data(), static_cast<int>(content.size()), document.Out());
  if (result.Failed()) return result;
  return Read(document.Get());
}

}  // namespace Corvane::Mox
