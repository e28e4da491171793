// CProperties::FromJson and Read: JSON text into a bag, through jsoncpp.
#include <json/json.h>

#include <cstdint>
#include <exception>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/Stream.h"
#include "System/PropertiesText.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

constexpr const char* AnnotationKey = "$annotation";

// Strict parsing with bounded recursion: jsoncpp refuses nesting beyond the
// stack limit, so neither it nor the conversion below can exhaust the stack.
bool Parse(const std::string& text, Json::Value& root) {
  Json::CharReaderBuilder builder;
  builder["collectComments"] = false;
  builder["allowComments"] = false;
  builder["allowTrailingCommas"] = false;
  builder["allowDroppedNullPlaceholders"] = false;
  builder["allowNumericKeys"] = false;
  builder["allowSingleQuotes"] = false;
  builder["allowSpecialFloats"] = false;
  builder["strictRoot"] = false;  // a scalar root parses, then is refused as "not an object"
  builder["skipBom"] = true;
  builder["failIfExtra"] = true;
  builder["stackLimit"] = PropertiesText::MaxReadDepth;
  std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  try {
    return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
  } catch (const std::exception&) {
    return false;  // jsoncpp throws when the stack limit is passed
  }
}

// Texts end at their first zero character, as everywhere in the library
// (jsoncpp lets "\u0000" through): keys that differ only after it are one key.
CString* NewString(const std::string& text) { return new CString(text.c_str()); }

// Nesting of the arrays and bags being read on this thread, so that Read
// (public, and recursive through nested objects) refuses values nested too
// deeply even when they were not parsed here with jsoncpp's own limit.
thread_local int readDepth = 0;

class DepthScope {
 public:
  DepthScope() {
    if (readDepth >= PropertiesText::MaxReadDepth)
      throw ResultError("JSON nests deeper than %d levels", PropertiesText::MaxReadDepth);
    ++readDepth;
  }
  ~DepthScope() { --readDepth; }
  DepthScope(const DepthScope&) = delete;
  DepthScope& operator=(const DepthScope&) = delete;
};

CVariant* ToVariant(const Json::Value& value);

CVariantArray* ToArray(const Json::Value& value) {
  DepthScope scope;
  auto count = static_cast<int>(value.size());
  RObject<CVariantArray> array(new CVariantArray(count));
  for (int i = 0; i < count; ++i) {
    RObject<CVariant> element(ToVariant(value[static_cast<Json::ArrayIndex>(i)]));
    array->Set(i, element.Get());
  }
  return array.Detach();
}

// Integers take the narrowest type that holds them: Int32, then UInt32 for
// positive values, then Int64, and UInt64 beyond the signed 64-bit range.
// Numbers with a fraction or an exponent are doubles.
CVariant* ToNumber(const Json::Value& value) {
  if (value.type() == Json::intValue) {
    Json::LargestInt n = value.asLargestInt();
    if (n >= std::numeric_limits<int>::min() && n <= std::numeric_limits<int>::max())
      return new CVariant(static_cast<int>(n));
    if (n > 0 && n <= static_cast<Json::LargestInt>(std::numeric_limits<unsigned int>::max()))
      return new CVariant(static_cast<unsigned int>(n));
    return new CVariant(static_cast<long long>(n));
  }
  if (value.type() == Json::uintValue) {
    Json::LargestUInt n = value.asLargestUInt();
    if (n <= std::numeric_limits<unsigned int>::max()) return new CVariant(static_cast<unsigned int>(n));
    if (n <= static_cast<Json::LargestUInt>(std::numeric_limits<long long>::max()))
      return new CVariant(static_cast<long long>(n));
    return new CVariant(static_cast<unsigned long long>(n));
  }
  return new CVariant(value.asDouble());
}

CVariant* ToVariant(const Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue:
      return nullptr;
    case Json::booleanValue:
      return new CVariant(value.asBool());
    case Json::intValue:
    case Json::uintValue:
    case Json::realValue:
      return ToNumber(value);
    case Json::stringValue: {
      RObject<CString> text(NewString(value.asString()));
      return new CVariant(text.Get());
    }
    case Json::arrayValue: {
      RObject<CVariantArray> array(ToArray(value));
      return new CVariant(array.Get());
    }
    case Json::objectValue: {
      RObject<CProperties> bag(new CProperties());
      bag->Read(const_cast<Json::Value&>(value));  // Read takes the value as jsoncpp hands it out
      return new CVariant(bag.Get());
    }
  }
  return nullptr;
}

// The members of an "$annotation" object become the descriptions of the
// entries they name; other members of it are ignored.
void ApplyAnnotations(CProperties* bag, const Json::Value& annotations) {
  for (const std::string& name : annotations.getMemberNames()) {
    const Json::Value& description = annotations[name];
    if (!description.isString()) continue;
    RObject<CString> key(NewString(name));
    RObject<CVariant> value(bag->GetProperty(key.Get()));
    if (!value) continue;
    RObject<CString> text(NewString(description.asString()));
    value->SetDescription(text.Get());
  }
}

}  // namespace

Result CProperties::Read(Json::Value& root) {
  if (!root.isObject()) throw ResultError("root value is not an object");
  DepthScope scope;
  // "$annotation" is reserved for the descriptions (names are compared after
  // the cut at a zero character, so no alias of it becomes an entry).
  std::vector<const Json::Value*> annotations;
  for (auto it = root.begin(); it != root.end(); ++it) {
    RObject<CString> key(NewString(it.name()));
    if (key->Equals(AnnotationKey)) {
      if (it->isObject()) annotations.push_back(&*it);
      continue;
    }
    RObject<CVariant> value(ToVariant(*it));
    Result stored = SetProperty(key.Get(), value.Get());
    if (stored.Failed()) throw stored;
  }
  for (const Json::Value* annotation : annotations) ApplyAnnotations(this, *annotation);
  return ResultOK();
}

CProperties* CProperties::FromJson(CStream* stream) {
  if (!stream) throw ResultArgumentNull("the stream is null");
  Json::Value root;
  if (!Parse(PropertiesText::ReadAll(stream), root)) throw ResultError("Json::Reader.parse failed");
  RObject<CProperties> bag(new CProperties());
  bag->Read(root);
  return bag.Detach();
}

}  // namespace Corvane::Mox
