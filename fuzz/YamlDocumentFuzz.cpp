// Arbitrary bytes as YAML of the library's subset: reading must give a
// document or a Result (never a crash or a hang), and what a document writes
// must read back. Names that start with a dash or hold line ends do not
// survive the format, so the text is compared only for plain trees.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "System/ByteArray.h"
#include "System/Collections/List.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/Yaml/YamlAttribute.h"
#include "System/Yaml/YamlDocument.h"

using namespace Corvane::Mox;

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

bool IsPlain(CString* name) { return name && name->GetChars()[0] != '-'; }

// Checks the accessors and tells whether every name reads back as written.
bool Visit(CYamlNode* node, int depth) {
  Check(depth <= CYamlNode::MaxDepth);
  bool plain = true;
  RObject<CList<CYamlAttribute>> attributes(node->GetAttributes());
  for (CYamlAttribute* attribute : *attributes) {
    const char* name = attribute->GetName()->GetChars();
    plain = plain && IsPlain(attribute->GetName());
    RObject<CString> value(node->GetAttribute(name));
    Check(value);
    node->GetAttributeAsInt64(name, 0);
    RObject<CVariant> number(node->GetAttributeAsDoubleVariant(name));
    Check(number);
  }
  RObject<CList<CYamlNode>> children(node->GetChildNodes());
  for (CYamlNode* child : *children) {
    plain = plain && IsPlain(child->GetName());
    plain = Visit(child, depth + 1) && plain;
  }
  return plain;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 1 << 20) return 0;
  RObject<CByteArray> bytes(new CByteArray(data, static_cast<int>(size)));
  RObject<CYamlDocument> document;
  Result read = CYamlDocument::CreateWithBytes(bytes, document.Out());
  if (read.Failed()) {
    Check(!document);
    return 0;
  }
  bool plain = Visit(document, 0);
  RObject<CString> written(document->GetString());
  RObject<CYamlDocument> again;
  Check(CYamlDocument::CreateWithString(written, again.Out()).Succeeded());
  RObject<CString> rewritten(again->GetString());
  Check(!plain || rewritten->Equals(written.Get()));
  return 0;
}
