#include "System/Threading/PerformanceCounter.h"

#include "System/Text.h"
#include "System/Threading/PerformanceCounterInventory.h"

namespace Corvane::Mox {

namespace {

// The factory code that serves a counter category, 0 when none does.
unsigned int FactoryCodeFor(CString* category) {
  if (!category) return 0;
  if (category->Equals("NVIDIA")) return FourCC("gpu ");
  if (category->Equals("AJA")) return FourCC("aja ");
  return 0;
}

}  // namespace

CPerformanceCounter::CPerformanceCounter()
    : CObject(TypeCode), category_(nullptr), counter_(nullptr), instance_(nullptr), value_(0) {}

CPerformanceCounter::~CPerformanceCounter() {
  Replace(category_, nullptr);
  Replace(counter_, nullptr);
  Replace(instance_, nullptr);
}

CPerformanceCounter* CPerformanceCounter::Create(CString* category, CString* counter, CString* instance,
                                                 unsigned int value) {
  unsigned int code = FactoryCodeFor(category);
  if (code == 0) return nullptr;
  CPerformanceCounter* created = CPerformanceCounterInventory::Create(code);
  // A counter that cannot initialise still reports what it can.
  if (created) created->Initialize(category, counter, instance, value);
  return created;
}

Result CPerformanceCounter::Initialize(CString* category, CString* counter, CString* instance, unsigned int value) {
  Replace(category_, category);
  Replace(counter_, counter);
  Replace(instance_, instance);
  value_ = value;
  return ResultOK();
}

void CPerformanceCounter::Replace(CString*& field, CString* value) {
  if (value) value->Acquire();
  CString* old = field;
  field = value;
  if (old) old->Release();
}

CString* CPerformanceCounter::Share(CString* field) {
  if (field) field->Acquire();
  return field;
}

CString* CPerformanceCounter::GetCategory() const { return Share(category_); }
CString* CPerformanceCounter::GetCounter() const { return Share(counter_); }
CString* CPerformanceCounter::GetInstance() const { return Share(instance_); }

}  // namespace Corvane::Mox
