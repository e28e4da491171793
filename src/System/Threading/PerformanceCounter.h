#pragma once
// CPerformanceCounter: a sampling counter (GPU load, capture-card buffers and
// the like). The concrete counters belong to the device components, which
// register their factories with CPerformanceCounterInventory under a
// four-character code; this class only picks the factory for a category and
// holds the names the counter was created with.

#include "System/Object.h"

namespace Corvane::Mox {

class CPerformanceCounter : public CObject {
 public:
  static constexpr unsigned int TypeCode = FourCC("pcnt");

  CPerformanceCounter();
  ~CPerformanceCounter() override;

  // A new counter for the category ("NVIDIA" uses the factory registered
  // under "gpu ", "AJA" the one under "aja "), initialised with the names and
  // value; null for any other category or when no such factory is registered.
  static CPerformanceCounter* Create(CString* category, CString* counter, CString* instance, unsigned int value);

  // Replaces the held names (each acquired; null leaves the field empty) and
  // the value.
  virtual Result Initialize(CString* category, CString* counter, CString* instance, unsigned int value);
  // The next reading of the counter.
  virtual double GetNextSample() = 0;

  // The held names, acquired (null when empty).
  CString* GetCategory() const;
  CString* GetCounter() const;
  CString* GetInstance() const;
  unsigned int GetValue() const { return value_; }

 private:
  static void Replace(CString*& field, CString* value);
  static CString* Share(CString* field);

  CString* category_;
  CString* counter_;
  CString* instance_;
  unsigned int value_;
};

}  // namespace Corvane::Mox
