#pragma once
// CVector<T>: an object owning a fixed-length array of plain values (numbers,
// small records); the values are not reference counted.

#include <algorithm>

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CVector : public CObject {
 public:
  // length values, value-initialised.
  explicit CVector(int length) : length_(std::max(length, 0)), values_(new T[length_]()) {}
  // A copy of length values (value-initialised when values is null).
  CVector(const T* values, int length) : CVector(length) {
    if (values) std::copy(values, values + length_, values_);
  }
  ~CVector() override { delete[] values_; }

  int GetLength() const { return length_; }
  T* GetData() { return values_; }
  const T* GetData() const { return values_; }

  Result Get(int index, T& value) const {
    if (index < 0 || index >= length_) return ResultArgumentOutOfRange();
    value = values_[index];
    return Result();
  }
  Result Set(int index, const T& value) {
    if (index < 0 || index >= length_) return ResultArgumentOutOfRange();
    values_[index] = value;
    return Result();
  }

  // Unchecked access for loops that already know their bounds.
  T& operator[](int index) { return values_[index]; }
  const T& operator[](int index) const { return values_[index]; }

 private:
  int length_;
  T* values_;
};

}  // namespace Corvane::Mox
