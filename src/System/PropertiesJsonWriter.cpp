// IProperties::ToJson: the JSON form of a bag, written through a stream
// writer with a nesting indent that grows by 2.
#include <cstdint>
#include <cstring>
#include <string>

#include "System/ByteArray.h"
#include "System/IO/StreamWriter.h"
#include "System/PropertiesText.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

using PropertiesText::Check;

// Texts are escaped only when they hold a character JSON cannot carry as
// it is. A double quote becomes an apostrophe rather than an escaped quote:
// readers of this output have always received it that way.
std::string Escape(const char* text) {
  if (!std::strpbrk(text, "\\\"\b\f\t\r\n")) return text;
  std::string out;
  for (const char* p = text; *p; ++p) {
    switch (*p) {
      case '\\':
        out += "\\\\";
        break;
      case '"':
        out += '\'';
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\n':
        out += "\\n";
        break;
      default:
        out += *p;
        break;
    }
  }
  return out;
}

class JsonWriter {
 public:
  explicit JsonWriter(CStream* stream) : writer_(new CStreamWriter(stream)) {}

  // "{}" for an empty bag; otherwise one entry per line, then "$annotation".
  void WriteBag(const IProperties* bag, int indent, int depth) {
    PropertiesText::CheckWriteDepth(depth);
    if (!bag || bag->GetPropertyCount() == 0) {
      Put("{}");
      return;
    }
    bool annotated = PropertiesText::HasDescriptions(bag);
    Put("{\n");
    PropertiesText::ForEachEntry(bag, [&](CString* key, CVariant* value, bool last) {
      Indent(indent + 2);
      WriteQuoted(key->GetChars());
      Put(": ");
      WriteValue(value, indent + 2, depth);
      Put(last && !annotated ? "\n" : ",\n");
    });
    if (annotated) WriteAnnotations(bag, indent + 2);
    Indent(indent);
    Put("}");
  }

 private:
  void WriteAnnotations(const IProperties* bag, int indent) {
    Indent(indent);
    Put("\"$annotation\": {\n");
    bool first = true;
    PropertiesText::ForEachEntry(bag, [&](CString* key, CVariant* value, bool) {
      RObject<CString> description(value ? value->GetDescription() : nullptr);
      if (!description) return;
      if (!first) Put(",\n");
      first = false;
      Indent(indent + 2);
      WriteQuoted(key->GetChars());
      Put(": ");
      WriteQuoted(description->GetChars());
    });
    Put("\n");
    Indent(indent);
    Put("}\n");
  }

  void WriteValue(CVariant* value, int indent, int depth) {
    if (!value) {
      Put("null");
      return;
    }
    switch (value->GetVariantType()) {
      case CVariant::Four:
      case CVariant::String: {
        RObject<CString> text(value->ToString());
        if (text)
          WriteQuoted(text->GetChars());
        else
          Put("null");
        return;
      }
      case CVariant::Pointer:
      case CVariant::Object:
        Check(writer_->WriteWithFormat(
            "%llu", static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(value->ToPointer()))));
        return;
      case CVariant::ByteArray: {
        RObject<CByteArray> bytes(value->ToByteArray());
        RObject<CString> hex(bytes ? CString::FromBytes(bytes.Get()) : nullptr);
        if (hex)
          Check(writer_->WriteWithFormat("\"%s\"", hex->GetChars()));
        else
          Put("null");
        return;
      }
      case CVariant::Properties: {
        RObject<CProperties> bag(value->ToProperties());
        WriteBag(bag.Get(), indent, depth + 1);
        return;
      }
      case CVariant::VariantArray: {
        RObject<CVariantArray> array(value->ToVariantArray());
        WriteArray(array.Get(), indent, depth + 1);
        return;
      }
      default: {
        RObject<CString> text(value->ToString());
        Put(text ? text->GetChars() : "null");
        return;
      }
    }
  }

  void WriteArray(CVariantArray* array, int indent, int depth) {
    PropertiesText::CheckWriteDepth(depth);
    int count = array ? array->GetCount() : 0;
    if (count == 0) {
      Put("[]");
      return;
    }
    Put("[\n");
    for (int i = 0; i < count; ++i) {
      RObject<CVariant> element;
      array->Get(i, element.Out());
      Indent(indent + 2);
      WriteValue(element.Get(), indent + 2, depth);
      Put(i + 1 < count ? ",\n" : "\n");
    }
    Indent(indent);
    Put("]");
  }

  void WriteQuoted(const char* text) {
    std::string escaped = Escape(text);
    Put("\"");
    Put(escaped.c_str());
    Put("\"");
  }

  void Indent(int indent) { Check(writer_->WriteWithFormat("%*s", indent, "")); }
  void Put(const char* text) { Check(writer_->Write(text)); }

  RObject<CStreamWriter> writer_;
};

}  // namespace

Result IProperties::ToJson(CStream* stream) const {
  if (!stream) return ResultArgumentNull("the stream is null");
  JsonWriter(stream).WriteBag(this, 0, 0);
  return ResultOK();
}

CString* IProperties::ToJson() const { return PropertiesText::WriteToString(this, &IProperties::ToJson); }

}  // namespace Corvane::Mox
