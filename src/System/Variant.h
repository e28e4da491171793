#pragma once
// CVariant: one typed value of a property bag. The type is one of the
// VariantType numbers; the value sits in one 64-bit slot holding the number,
// a raw pointer (not owned) or one reference to an object. A variant is
// immutable after construction except for its description.

#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;
class CProperties;
class CVariantArray;

class CVariant : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("vrnt");

  // Stored and compared as numbers; the order is part of the data model.
  enum VariantType : unsigned char {
    Four = 0,  // four-character code, unsigned 32-bit
    Boolean = 1,
    Char = 2,
    Int8 = 3,
    UInt8 = 4,
    Int16 = 5,
    UInt16 = 6,
    Int32 = 7,
    UInt32 = 8,
    Int64 = 9,    // long long
    UInt64 = 10,  // unsigned long long
    Long = 11,
    ULong = 12,
    Float = 13,
    Double = 14,
    Pointer = 15,       // raw pointer, not owned
    Object = 16,        // CObject, one reference
    String = 17,        // CString, one reference
    ByteArray = 18,     // CByteArray, one reference
    Properties = 19,    // CProperties, one reference
    VariantArray = 20,  // CVariantArray, one reference
  };

  // Numbers, characters and booleans are converted to the representation of
  // type when it names one of them (so CVariant(code, Four) marks an unsigned
  // value as a four-character code); another type keeps the natural one.
  CVariant(bool value, VariantType type = Boolean);
  CVariant(char value, VariantType type = Char);
  CVariant(signed char value, VariantType type = Int8);
  CVariant(unsigned char value, VariantType type = UInt8);
  CVariant(short value, VariantType type = Int16);
  CVariant(unsigned short value, VariantType type = UInt16);
  CVariant(int value, VariantType type = Int32);
  CVariant(unsigned int value, VariantType type = UInt32);
  CVariant(long value, VariantType type = Long);
  CVariant(unsigned long value, VariantType type = ULong);
  CVariant(long long value, VariantType type = Int64);
  CVariant(unsigned long long value, VariantType type = UInt64);
  CVariant(float value, VariantType type = Float);
  CVariant(double value, VariantType type = Double);
  // Always a raw pointer (type 15).
  CVariant(void* value, VariantType type = Pointer);
  // References are acquired. An object is stored as the kind type names when
  // it really is one (a string, byte array, bag or variant array), else as a
  // plain object.
  CVariant(CObject* value, VariantType type = Object);
  CVariant(CString* value, VariantType type = String);
  CVariant(CByteArray* value, VariantType type = ByteArray);
  CVariant(CVariantArray* value, VariantType type = VariantArray);
  CVariant(CProperties* value, VariantType type = Properties);
  // A string variant holding a copy of the UTF-8 text.
  explicit CVariant(const char* text);
  ~CVariant() override;

  VariantType GetVariantType() const { return type_; }
  // The description, acquired (null when there is none).
  CString* GetDescription() const;
  void SetDescription(CString* description);
  void SetDescription(const char* description);
  // The XML Schema type name of the variant type; null for pointers and objects.
  const char* GetXsiType() const { return GetXsiType(type_); }
  static const char* GetXsiType(VariantType type);

  // Conversions. Objects come back acquired; strings are new (or, for a
  // string variant, the string itself acquired). A null reference converts
  // to 0, false or null.
  bool ToBoolean() const;
  char ToChar() const;
  signed char ToInt8() const;
  unsigned char ToUInt8() const;
  short ToInt16() const;
  unsigned short ToUInt16() const;
  int ToInt32() const;
  unsigned int ToUInt32() const;
  long long ToInt64() const;
  unsigned long long ToUInt64() const;
  float ToFloat() const;
  double ToDouble() const;
  unsigned int ToFour() const;
  // The raw pointer, or the address of the referenced object (not acquired);
  // null for values.
  void* ToPointer() const;
  CObject* ToObject() const;
  CByteArray* ToByteArray() const;
  CProperties* ToProperties() const;
  CVariantArray* ToVariantArray() const;
  CString* ToString() const override;

  // True for the types that hold a reference (16 to 20).
  static bool IsReferenceType(VariantType type) { return type >= Object && type <= VariantArray; }

 private:
  union Value {
    bool b;
    char c;
    signed char i8;
    unsigned char u8;
    short i16;
    unsigned short u16;
    int i32;
    unsigned int u32;
    long l;
    unsigned long ul;
    long long i64;
    unsigned long long u64;
    float f;
    double d;
    void* p;
    CObject* o;
  };

  CVariant();
  template <class T>
  void SetNumber(T value, VariantType type, VariantType natural);
  void SetReference(CObject* object, VariantType type);
  // The value read at the source type's width and signedness.
  template <class T>
  T ToNumber() const;
  template <class T>
  T FromText() const;
  template <class T>
  T FromBytes() const;

  VariantType type_;
  Value value_;
  CString* description_;
};

}  // namespace Corvane::Mox
