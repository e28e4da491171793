#pragma once
// CVarianceProperties ("vrcp"): the container extension that holds the
// variances a reader found, in the order found. It only grows.

#include <vector>

#include "System/Media/Container/ContainerPropertiesExtension.h"

namespace Corvane::Mox {

template <class T>
class CList;
class CVariance;

class CVarianceProperties : public CContainerPropertiesExtension {
 public:
  static constexpr unsigned int TypeCode = FourCC("vrcp");

  CVarianceProperties();
  ~CVarianceProperties() override;

  int GetCount() const;
  // A new list of the variances.
  CList<CVariance>* GetElements() const;
  void Add(CVariance* variance);
  void Merge(CList<CVariance>* variances);
  // Nothing when empty; otherwise "CVariance": one bag per variance.
  Result GetProperties(CProperties* bag) const override;

 private:
  std::vector<CVariance*> elements_;
};

}  // namespace Corvane::Mox
