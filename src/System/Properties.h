#pragma once
// Property bags. IProperties is the bag interface, a mixin that any class can
// carry beside CObject: named, typed values (CVariant) kept in insertion order
// in a dictionary created on the first write, read and written generically,
// copied from bag to bag and written out as JSON, YAML or XML. CProperties is
// the stand-alone bag, which can also be read back from JSON and XML.
//
// Classes that compute properties on the fly override the four virtual
// operations; everything else is built on them. Bags are not locked: owners
// lock their own monitor around compound updates.

#include "System/Collections/Dictionary.h"
#include "System/Object.h"
#include "System/PropertyName.h"
#include "System/Text.h"
#include "System/Variant.h"

namespace Json {
class Value;
}

namespace Corvane::Mox {

class CByteArray;
class CProperties;
class CStream;
class CVariantArray;

class IProperties {
 public:
  using Dictionary = CDictionary<CString, CVariant>;

  IProperties();
  // Copies the source's entries into a new dictionary; the variants are shared.
  explicit IProperties(const IProperties* source);
  IProperties(const IProperties&) = delete;
  IProperties& operator=(const IProperties&) = delete;
  virtual ~IProperties();

  // The value of the first key equal to name (case-sensitive), acquired:
  // ResultOK when found with a value, else ResultFalse with value null. A bag
  // that was never written answers ResultOK and leaves value untouched.
  virtual Result GetProperty(CString* name, CVariant*& value) const;
  // Replaces the value of an equal key or appends the pair; a null value keeps
  // the key (reads of it give ResultFalse).
  virtual Result SetProperty(CString* name, CVariant* value);
  // The value's bytes (its ToByteArray) copied into buffer. ResultFalse when
  // absent or without bytes, ResultOK for a null buffer (an existence test),
  // ResultBufferTooSmall when there are more than size bytes.
  virtual Result GetProperty(const PropertyName& name, int size, unsigned char* buffer) const;
  // Stores a byte-array variant holding a copy of the bytes.
  virtual Result SetProperty(const PropertyName& name, int size, const unsigned char* bytes);

  int GetPropertyCount() const;
  // The dictionary, acquired; null until the first write.
  Dictionary* GetProperties() const;
  // The key at index, acquired; null when out of range.
  CString* GetPropertyName(int index) const;
  bool ContainsProperty(const PropertyName& name) const;
  bool ContainsProperty(CString* name) const;
  // The variant (acquired) or null.
  CVariant* GetProperty(const PropertyName& name) const;
  CVariant* GetProperty(CString* name) const;
  Result GetProperty(const PropertyName& name, CVariant*& value) const;

  // Typed getters: ResultFalse with value unchanged when the property is
  // missing or null, else ResultOK with the variant's conversion. Object
  // outputs are acquired.
  Result GetProperty(const PropertyName& name, bool& value) const;
  Result GetProperty(const PropertyName& name, char& value) const;
  Result GetProperty(const PropertyName& name, signed char& value) const;
  Result GetProperty(const PropertyName& name, unsigned char& value) const;
  Result GetProperty(const PropertyName& name, short& value) const;
  Result GetProperty(const PropertyName& name, unsigned short& value) const;
  Result GetProperty(const PropertyName& name, int& value) const;
  Result GetProperty(const PropertyName& name, unsigned int& value) const;
  Result GetProperty(const PropertyName& name, long& value) const;
  Result GetProperty(const PropertyName& name, unsigned long& value) const;
  Result GetProperty(const PropertyName& name, long long& value) const;
  Result GetProperty(const PropertyName& name, unsigned long long& value) const;
  Result GetProperty(const PropertyName& name, float& value) const;
  Result GetProperty(const PropertyName& name, double& value) const;
  Result GetProperty(const PropertyName& name, void*& value) const;
  Result GetProperty(const PropertyName& name, CObject*& value) const;
  Result GetProperty(const PropertyName& name, CByteArray*& value) const;
  Result GetProperty(const PropertyName& name, CString*& value) const;
  Result GetProperty(const PropertyName& name, CVariantArray*& value) const;
  Result GetProperty(const PropertyName& name, CProperties*& value) const;
  Result GetFourProperty(const PropertyName& name, unsigned int& value) const;
  // The value's bytes (acquired) or null.
  CByteArray* GetByteArray(const PropertyName& name) const;
  CByteArray* GetByteArray(CString* name) const;

  // Typed setters: each stores a new variant of the matching type.
  Result SetProperty(const PropertyName& name, bool value);
  Result SetProperty(const PropertyName& name, char value);
  Result SetProperty(const PropertyName& name, signed char value);
  Result SetProperty(const PropertyName& name, unsigned char value);
  Result SetProperty(const PropertyName& name, short value);
  Result SetProperty(const PropertyName& name, unsigned short value);
  Result SetProperty(const PropertyName& name, int value);
  Result SetProperty(const PropertyName& name, unsigned int value);
  Result SetProperty(const PropertyName& name, long value);
  Result SetProperty(const PropertyName& name, unsigned long value);
  Result SetProperty(const PropertyName& name, long long value);
  Result SetProperty(const PropertyName& name, unsigned long long value);
  Result SetProperty(const PropertyName& name, float value);
  Result SetProperty(const PropertyName& name, double value);
  Result SetProperty(const PropertyName& name, void* value);
  Result SetProperty(const PropertyName& name, CObject* value);
  Result SetProperty(const PropertyName& name, CByteArray* value);
  Result SetProperty(const PropertyName& name, CVariantArray* value);
  Result SetProperty(const PropertyName& name, CProperties* value);
  Result SetProperty(const PropertyName& name, CString* value);
  // Text is stored as a string variant; a null text stores a null value.
  Result SetProperty(const PropertyName& name, const char* value);
  Result SetProperty(const PropertyName& name, const wchar_t* value);
  Result SetProperty(const PropertyName& name, CVariant* value);
  Result SetFourProperty(const PropertyName& name, unsigned int value);

  // Descriptions live on the stored variant (shared by bags that share it).
  // The getter gives the description acquired, or null; the setters answer
  // ResultFalse when there is no such property.
  Result GetPropertyDescription(const PropertyName& name, CString*& description) const;
  Result SetPropertyDescription(const PropertyName& name, CString* description);
  Result SetPropertyDescription(const PropertyName& name, const char* description);

  // ResultFalse when absent.
  Result RemoveProperty(const PropertyName& name);
  Result RemoveProperty(CString* name);
  // Merge entry by entry with the store rule.
  Result SetProperties(const IProperties* source);
  Result SetProperties(Dictionary* source);
  void ClearProperties();

  // Text forms. The stream forms throw the failed Result of a write.
  CString* ToJson() const;
  Result ToJson(CStream* stream) const;
  CString* ToYaml() const;
  Result ToYaml(CStream* stream) const;
  CString* ToXml() const;
  Result ToXml(CStream* stream) const;
  // Kept for old callers; the text only points them to the replacements.
  CString* FormatString(const char* format) const;

 private:
  Dictionary* properties_;
};

class CProperties : public CObject, public IProperties {
 public:
  static constexpr unsigned int TypeCode = FourCC("prop");

  CProperties();
  explicit CProperties(const IProperties* source);

  // Answers "prop" besides the subclass's own code.
  bool IsType(unsigned int type) const override;
  // The JSON text of the bag.
  CString* ToString() const override;

  // A new bag read from JSON text; throws ResultError when the text does not
  // parse ("Json::Reader.parse failed") or its root is not an object.
  static CProperties* FromJson(CStream* stream);
  // Adds the members of a JSON object: objects become nested bags, arrays
  // variant arrays, integers the narrowest of Int32, UInt32, Int64 and UInt64
  // that holds them, other numbers Double. The name "$annotation" is
  // reserved: an object of that name gives the descriptions of the members
  // it names, anything else under it is ignored. Throws ResultError when root is not
  // an object or nests too deeply.
  Result Read(Json::Value& root);
  // A new bag read from a "container" document as written by ToXml; throws
  // ResultFormatError for text that is not such a document.
  static CProperties* FromXml(CStream* stream);

 protected:
  CProperties(unsigned int type, const IProperties* source);
};

}  // namespace Corvane::Mox
