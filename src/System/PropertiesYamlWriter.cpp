// IProperties::ToYaml: the YAML form of a bag, block style, indented by 2
// per level. Texts holding a character YAML would read as syntax are
// single-quoted.
#include <cstring>

#include "System/ByteArray.h"
#include "System/IO/StreamWriter.h"
#include "System/PropertiesText.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

namespace {

using PropertiesText::Check;

constexpr const char* QuotedCharacters = ":{}[],&*#?|+-<>=!%@\\";

bool NeedsQuotes(const char* text) { return std::strpbrk(text, QuotedCharacters) != nullptr; }

class YamlWriter {
 public:
  explicit YamlWriter(CStream* stream) : writer_(new CStreamWriter(stream)) {}

  void WriteDocument(const IProperties* bag) {
    Put("---\n");
    WriteEntries(bag, 0, 0);
  }

 private:
  // One line per entry at indent; nested values continue below it.
  void WriteEntries(const IProperties* bag, int indent, int depth) {
    PropertiesText::CheckWriteDepth(depth);
    PropertiesText::ForEachEntry(
        bag, [&](CString* key, CVariant* value, bool) { WriteEntry(key->GetChars(), value, indent, depth); });
    if (!PropertiesText::HasDescriptions(bag)) return;
    Check(writer_->WriteWithFormat("%*s%s:\n", indent, "", "$annotation"));
    PropertiesText::ForEachEntry(bag, [&](CString* key, CVariant* value, bool) {
      RObject<CString> description(value ? value->GetDescription() : nullptr);
      if (description) WriteText(key->GetChars(), description->GetChars(), indent + 2);
    });
  }

  void WriteEntry(const char* key, CVariant* value, int indent, int depth) {
    if (!value) {
      Check(writer_->WriteWithFormat("%*s%s: null\n", indent, "", key));
      return;
    }
    switch (value->GetVariantType()) {
      case CVariant::Properties: {
        RObject<CProperties> bag(value->ToProperties());
        if (!bag || bag->GetPropertyCount() == 0) {
          Check(writer_->WriteWithFormat("%*s%s: {}\n", indent, "", key));
          return;
        }
        Check(writer_->WriteWithFormat("%*s%s:\n", indent, "", key));
        WriteEntries(bag.Get(), indent + 2, depth + 1);
        return;
      }
      case CVariant::VariantArray: {
        RObject<CVariantArray> array(value->ToVariantArray());
        if (!array || array->GetCount() == 0) {
          Check(writer_->WriteWithFormat("%*s%s: []\n", indent, "", key));
          return;
        }
        Check(writer_->WriteWithFormat("%*s%s:\n", indent, "", key));
        WriteItems(array.Get(), indent + 2, depth + 1);
        return;
      }
      default: {
        RObject<CString> text(Scalar(value));
        if (!text) {
          Check(writer_->WriteWithFormat("%*s%s: null\n", indent, "", key));
        } else if (IsText(value)) {
          WriteText(key, text->GetChars(), indent);
        } else {
          Check(writer_->WriteWithFormat("%*s%s: %s\n", indent, "", key, text->GetChars()));
        }
        return;
      }
    }
  }

  // Array items as "- value" lines; a non-empty nested bag or array goes on
  // the lines after its dash, indented by 2 more.
  void WriteItems(CVariantArray* array, int indent, int depth) {
    PropertiesText::CheckWriteDepth(depth);
    for (int i = 0; i < array->GetCount(); ++i) {
      RObject<CVariant> item;
      array->Get(i, item.Out());
      WriteItem(item.Get(), indent, depth);
    }
  }

  void WriteItem(CVariant* item, int indent, int depth) {
    CVariant::VariantType type = item ? item->GetVariantType() : CVariant::Object;
    if (item && type == CVariant::Properties) {
      RObject<CProperties> bag(item->ToProperties());
      if (!bag || bag->GetPropertyCount() == 0) {
        Check(writer_->WriteWithFormat("%*s- {}\n", indent, ""));
      } else {
        Check(writer_->WriteWithFormat("%*s-\n", indent, ""));
        WriteEntries(bag.Get(), indent + 2, depth + 1);
      }
      return;
    }
    if (item && type == CVariant::VariantArray) {
      RObject<CVariantArray> array(item->ToVariantArray());
      if (!array || array->GetCount() == 0) {
        Check(writer_->WriteWithFormat("%*s- []\n", indent, ""));
      } else {
        Check(writer_->WriteWithFormat("%*s-\n", indent, ""));
        WriteItems(array.Get(), indent + 2, depth + 1);
      }
      return;
    }
    RObject<CString> text(item ? Scalar(item) : nullptr);
    if (!text) {
      Check(writer_->WriteWithFormat("%*s- null\n", indent, ""));
    } else if (IsText(item) && NeedsQuotes(text->GetChars())) {
      Check(writer_->WriteWithFormat("%*s- '%s'\n", indent, "", text->GetChars()));
    } else {
      Check(writer_->WriteWithFormat("%*s- %s\n", indent, "", text->GetChars()));
    }
  }

  void WriteText(const char* key, const char* text, int indent) {
    Check(writer_->WriteWithFormat(NeedsQuotes(text) ? "%*s%s: '%s'\n" : "%*s%s: %s\n", indent, "", key, text));
  }

  static bool IsText(CVariant* value) {
    return value->GetVariantType() == CVariant::Four || value->GetVariantType() == CVariant::String;
  }

  // The text of a value that fits on its key's line: pointers and objects as
  // addresses, bytes as hexadecimal, everything else as its own text.
  static CString* Scalar(CVariant* value) {
    switch (value->GetVariantType()) {
      case CVariant::Pointer:
      case CVariant::Object:
        return CString::WithFormat("%p", value->ToPointer());
      case CVariant::ByteArray: {
        RObject<CByteArray> bytes(value->ToByteArray());
        return bytes ? CString::FromBytes(bytes.Get()) : nullptr;
      }
      default:
        return value->ToString();
    }
  }

  void Put(const char* text) { Check(writer_->Write(text)); }

  RObject<CStreamWriter> writer_;
};

}  // namespace

Result IProperties::ToYaml(CStream* stream) const {
  if (!stream) return ResultArgumentNull("the stream is null");
  YamlWriter(stream).WriteDocument(this);
  return ResultOK();
}

CString* IProperties::ToYaml() const { return PropertiesText::WriteToString(this, &IProperties::ToYaml); }

}  // namespace Corvane::Mox
