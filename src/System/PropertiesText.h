#pragma once
// Helpers shared by the JSON, YAML and XML forms of property bags (internal
// to the library: the text writers and readers include it, hosts need not).

#include <string>

#include "System/Properties.h"

namespace Corvane::Mox::PropertiesText {

// Deepest nesting of bags and arrays the readers accept. Text nested deeper
// is refused with an error instead of recursing without bound.
constexpr int MaxReadDepth = 200;
// Deepest nesting the writers follow; a bag that contains itself ends here.
constexpr int MaxWriteDepth = 512;

// Throws ResultInvalidOperation when depth passes MaxWriteDepth.
void CheckWriteDepth(int depth);

// Calls visit(CString* key, CVariant* value, bool last) for each entry in
// insertion order; key and value are borrowed for the call, value may be null.
template <class Visit>
void ForEachEntry(const IProperties* bag, Visit visit) {
  RObject<IProperties::Dictionary> entries(bag ? bag->GetProperties() : nullptr);
  int count = entries ? entries->GetCount() : 0;
  for (int i = 0; i < count; ++i) {
    RObject<CString> key;
    RObject<CVariant> value;
    if (entries->GetKeyAndValue(i, key.Out(), value.Out()).Failed()) break;
    visit(key.Get(), value.Get(), i == count - 1);
  }
}

// Whether any entry carries a description.
bool HasDescriptions(const IProperties* bag);

// Runs the stream form of a writer over a new memory stream and returns what
// it wrote as a string.
CString* WriteToString(const IProperties* bag, Result (IProperties::*write)(CStream*) const);

// Everything a stream holds from its position to its end.
std::string ReadAll(CStream* stream);

// Throws result when it failed (a stream write that did not succeed).
inline void Check(const Result& result) { result.ThrowIfFailed(); }

}  // namespace Corvane::Mox::PropertiesText
