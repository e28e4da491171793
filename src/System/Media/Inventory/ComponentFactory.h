#pragma once
// CComponentFactory<T>: creates components of family T (a filter family, the
// container readers or writers, signals or packages) by their four-character
// component code, which is also the factory's type id.

#include "System/Object.h"

namespace Corvane::Mox {

template <class T>
class CComponentFactory : public CObject {
 public:
  using Component = T;

  explicit CComponentFactory(unsigned int code) : CObject(code), priority_(0), available_(true) {}

  unsigned int GetCode() const { return GetType(); }
  // When non-zero, replaces the component's own score in the converter search.
  int GetPriority() const { return priority_; }
  void SetPriority(int priority) { priority_ = priority; }
  bool IsAvailable() const { return available_; }
  void SetAvailable(bool available) { available_ = available; }

  // A new component (the caller owns the reference), or null.
  virtual T* CreateInstance() const = 0;

 private:
  int priority_;
  bool available_;
};

// The factory of component class T in family Base. T names its code in a
// static ComponentCode.
template <class Base, class T>
class CInstanceFactory : public CComponentFactory<Base> {
 public:
  CInstanceFactory() : CComponentFactory<Base>(T::ComponentCode) {}
  Base* CreateInstance() const override { return new T(); }
};

// Stands for a component this build does not contain: it keeps the code in
// the registry (so the catalog is complete and scripts get a clear
// "unavailable" error) and creates nothing.
template <class Base>
class CUnavailableFactory : public CComponentFactory<Base> {
 public:
  explicit CUnavailableFactory(unsigned int code) : CComponentFactory<Base>(code) { this->SetAvailable(false); }
  Base* CreateInstance() const override { return nullptr; }
};

}  // namespace Corvane::Mox
