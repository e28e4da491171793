#pragma once
// CValue<T>: a plain value (a number, a thread id, a small record) boxed as an
// object so it can be stored in the collections, and CValueList<T>, a list of
// boxes with value-level operations. Two boxes are equal when their values
// are; that is what makes them usable as hash-table keys.

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "System/Collections/List.h"

namespace Corvane::Mox {

template <class T>
class CValue : public CObject {
  static_assert(std::is_trivially_copyable_v<T>, "a boxed value is hashed through its bytes");

 public:
  static constexpr unsigned int TypeCode = FourCC("vu<>");

  CValue() : CObject(TypeCode), value_() {}
  explicit CValue(const T& value) : CObject(TypeCode), value_(value) {}

  const T& GetValue() const { return value_; }
  void SetValue(const T& value) { value_ = value; }

  using CObject::Equals;
  // Final: a box's equality and hash are its value's; keys of the static type
  // CValue<T> then hash without a virtual call.
  bool Equals(const CObject* other) const final {
    if (other == this) return true;
    auto* box = dynamic_cast<const CValue*>(other);
    return box && ValueEquals(box->value_);
  }
  // Value comparison without a type test, picked when the static type is known.
  bool Equals(const CValue* other) const { return other && ValueEquals(other->value_); }

  bool ValueEquals(const T& other) const {
    if constexpr (requires(const T& a, const T& b) { a == b; }) {
      return value_ == other;
    } else {
      return std::memcmp(&value_, &other, sizeof(T)) == 0;
    }
  }

  // The string hash run over the value's bytes in memory order. The per-byte
  // step takes unsigned bytes and logical shifts while the final step shifts
  // the signed value arithmetically; stored hashes depend on exactly this.
  int GetHashCode() const final {
    auto* bytes = reinterpret_cast<const unsigned char*>(&value_);
    std::uint32_t h = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) {
      h += bytes[i];
      h += h << 10;
      h ^= h >> 6;
    }
    h += h << 3;
    h ^= static_cast<std::uint32_t>(static_cast<std::int32_t>(h) >> 11);
    h += h << 15;
    return static_cast<int>(h);
  }

 private:
  T value_;
};

template <class T>
class CValueList : public CList<CValue<T>> {
 public:
  static constexpr unsigned int TypeCode = FourCC("vu<>");

  CValueList() { this->SetType(TypeCode); }

  // A value list is a list as well.
  bool IsType(unsigned int type) const override { return type == TypeCode || type == CList<CValue<T>>::TypeCode; }

  Result AddValue(T value) {
    RObject<CValue<T>> box(new CValue<T>(value));
    return this->Add(box);
  }

  Result GetValue(int index, T& value) const {
    RObject<CValue<T>> box;
    Result result = this->Get(index, box.Out());
    if (result.Failed()) return result;
    if (!box) return ResultNullPointer();
    value = box->GetValue();
    return Result();
  }

  bool ContainsValue(const T& value) const {
    for (auto* node = this->GetHead(); node; node = node->next)
      if (node->item && node->item->ValueEquals(value)) return true;
    return false;
  }

  // The value under the list's own enumerator; ResultFalse when it stands on nothing.
  Result GetCurrentValue(T& value) {
    CValue<T>* box = this->GetEnumerator()->PeekCurrent();
    if (!box) return ResultFalse();
    value = box->GetValue();
    return Result();
  }
  // Replaces the value under the list's own enumerator.
  Result SetCurrentValue(T& value) {
    CValue<T>* box = this->GetEnumerator()->PeekCurrent();
    if (!box) return ResultFalse();
    box->SetValue(value);
    return Result();
  }
};

}  // namespace Corvane::Mox
