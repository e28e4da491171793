#include "System/PropertiesText.h"

#include "System/ByteArray.h"
#include "System/IO/MemoryStream.h"

namespace Corvane::Mox::PropertiesText {

void CheckWriteDepth(int depth) {
  if (depth > MaxWriteDepth) throw ResultInvalidOperation("property bags nest deeper than %d levels", MaxWriteDepth);
}

bool HasDescriptions(const IProperties* bag) {
  bool found = false;
  ForEachEntry(bag, [&found](CString*, CVariant* value, bool) {
    if (!value || found) return;
    RObject<CString> description(value->GetDescription());
    found = description.Get() != nullptr;
  });
  return found;
}

std::string ReadAll(CStream* stream) {
  std::string text;
  unsigned char buffer[4096];
  for (;;) {
    int read = 0;
    Result result = stream->Read(buffer, static_cast<int>(sizeof buffer), &read);
    if (read > 0) text.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(read));
    if (result.Failed() || read <= 0) break;
  }
  return text;
}

CString* WriteToString(const IProperties* bag, Result (IProperties::*write)(CStream*) const) {
  RObject<CMemoryStream> stream(new CMemoryStream());
  (bag->*write)(stream.Get()).ThrowIfFailed();
  return new CString(reinterpret_cast<const char*>(stream->GetData()), static_cast<int>(stream->GetLength()));
}

}  // namespace Corvane::Mox::PropertiesText
