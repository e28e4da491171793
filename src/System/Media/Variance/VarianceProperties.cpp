#include "System/Media/Variance/VarianceProperties.h"

#include "System/Collections/List.h"
#include "System/Media/Variance/Variance.h"
#include "System/Properties.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

CVarianceProperties::CVarianceProperties() : CContainerPropertiesExtension(TypeCode) {}

CVarianceProperties::~CVarianceProperties() {
  for (CVariance* variance : elements_) variance->Release();
}

int CVarianceProperties::GetCount() const {
  CAutoLock lock(this);
  return static_cast<int>(elements_.size());
}

CList<CVariance>* CVarianceProperties::GetElements() const {
  CAutoLock lock(this);
  auto* list = new CList<CVariance>();
  for (CVariance* variance : elements_) list->Add(variance);
  return list;
}

void CVarianceProperties::Add(CVariance* variance) {
  if (!variance) return;
  CAutoLock lock(this);
  variance->Acquire();
  elements_.push_back(variance);
}

void CVarianceProperties::Merge(CList<CVariance>* variances) {
  if (!variances) return;
  for (CVariance* variance : *variances) Add(variance);
}

Result CVarianceProperties::GetProperties(CProperties* bag) const {
  if (!bag) return ResultArgumentNull();
  CAutoLock lock(this);
  if (elements_.empty()) return Result();
  RObject<CVariantArray> array(new CVariantArray(static_cast<int>(elements_.size())));
  for (size_t i = 0; i < elements_.size(); ++i) {
    RObject<CProperties> element(new CProperties());
    elements_[i]->GetProperties(element).ThrowIfFailed();
    RObject<CVariant> value(new CVariant(element.Get()));
    array->Set(static_cast<int>(i), value).ThrowIfFailed();
  }
  bag->SetProperty("CVariance", array.Get()).ThrowIfFailed();
  return Result();
}

}  // namespace Corvane::Mox
