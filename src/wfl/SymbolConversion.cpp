// Conversions between WFL values and the property system: a variant becomes
// a symbol (bags become objects, variant arrays arrays), and a value becomes
// a variant (objects become bags, arrays variant arrays).
#include <string>

#include "System/ByteArray.h"
#include "System/Properties.h"
#include "System/Text.h"
#include "System/VariantArray.h"
#include "wfl/ObjectValue.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"
#include "wfl/TimeCodeValue.h"
#include "wfl/ValueNesting.h"

namespace Corvane::Mox::WFL {

namespace {

CSymbolValue* ObjectFromProperties(CProperties* bag) {
  CValueNesting nesting;
  RObject<CSymbolDictionary> members(new CSymbolDictionary());
  for (int i = 0; bag && i < bag->GetPropertyCount(); ++i) {
    RObject<CString> name(bag->GetPropertyName(i));
    RObject<CVariant> item(bag->GetProperty(name.Get()));
    RObject<CSymbol> symbol(new CSymbol(item.Get()));
    members->SetSymbol(name.Get(), symbol).ThrowIfFailed();
  }
  return new CObjectValue(members);
}

CSymbolValue* ArrayFromVariants(CVariantArray* array) {
  CValueNesting nesting;
  RObject<CSymbolDictionary> items(new CSymbolDictionary());
  for (int i = 0; array && i < array->GetCount(); ++i) {
    RObject<CVariant> item;
    array->Get(i, item.Out());
    RObject<CSymbol> symbol(new CSymbol(item.Get()));
    items->SetSymbol(std::to_string(i).c_str(), symbol).ThrowIfFailed();
  }
  return new CArrayValue(items);
}

CSymbolValue* ValueFromVariant(CVariant* variant) {
  switch (variant->GetVariantType()) {
    case CVariant::Boolean:
      return new CBooleanValue(variant->ToBoolean());
    case CVariant::Int64:
    case CVariant::UInt64:
    case CVariant::Long:
    case CVariant::ULong:
      return new CNumericValue(static_cast<double>(variant->ToInt64()));
    case CVariant::Four:
    case CVariant::Char:
    case CVariant::Int8:
    case CVariant::UInt8:
    case CVariant::Int16:
    case CVariant::UInt16:
    case CVariant::Int32:
    case CVariant::UInt32:
    case CVariant::Float:
    case CVariant::Double:
      return new CNumericValue(variant->ToDouble());
    case CVariant::String: {
      RObject<CString> text(variant->ToString());
      return new CStringValue(text.Get());
    }
    case CVariant::Properties: {
      RObject<CProperties> bag(variant->ToProperties());
      return ObjectFromProperties(bag.Get());
    }
    case CVariant::VariantArray: {
      RObject<CVariantArray> array(variant->ToVariantArray());
      return ArrayFromVariants(array.Get());
    }
    default:
      return nullptr;  // pointers, plain objects and byte arrays have no script form
  }
}

CVariant* VariantArrayFromItems(CSymbolDictionary* items) {
  CValueNesting nesting;
  RObject<CVariantArray> array(new CVariantArray(items->GetCount()));
  for (int i = 0; i < items->GetCount(); ++i) {
    RObject<CString> name;
    RObject<CSymbol> symbol;
    items->GetKeyAndValue(i, name.Out(), symbol.Out());
    RObject<CVariant> item(CSymbolValue::CreateVariant(symbol ? symbol->GetValue() : nullptr));
    array->Set(i, item.Get());
  }
  return new CVariant(array.Get());
}

// The four bytes of the broken-down form: hours, minutes, seconds, frames.
CVariant* TimeCodeBytes(const CTimeCode& timeCode) {
  TimeCodeTime time;
  timeCode.ToTime(&time);
  const unsigned char bytes[4] = {time.Hours, time.Minutes, time.Seconds, time.Frames};
  RObject<CByteArray> array(new CByteArray(bytes, 4));
  return new CVariant(array.Get());
}

}  // namespace

CSymbol::CSymbol(CVariant* variant) : CSymbol() {
  if (variant) Adopt(ValueFromVariant(variant));
}

CVariant* CSymbolValue::CreateVariant(CSymbolValue* value) {
  if (!value) return nullptr;
  switch (value->GetType()) {
    case CBooleanValue::TypeCode:
      return new CVariant(value->ToBoolean());
    case CNumericValue::TypeCode:
      return new CVariant(value->ToDouble());
    case CTimeCodeValue::TypeCode:
      return TimeCodeBytes(static_cast<CTimeCodeValue*>(value)->GetTimeCode());
    case CStringValue::TypeCode:
      return new CVariant(static_cast<CStringValue*>(value)->GetText());
    case CArrayValue::TypeCode: {
      RObject<CSymbolDictionary> items(value->ToDictionary());
      return VariantArrayFromItems(items);
    }
    default:
      break;
  }
  if (!value->IsType(CObjectValue::TypeCode)) return nullptr;
  RObject<CSymbolDictionary> members(value->ToDictionary());
  RObject<CProperties> bag(members->ToProperties());
  return new CVariant(bag.Get());
}

}  // namespace Corvane::Mox::WFL
