#pragma once
// CMediaFilterFactory<F>: presents a factory registered in one filter family
// (F, e.g. CComponentFactory<CVideoConverter>) as a factory of plain media
// filters, so the transform inventory can hold factories of every family in
// one list. It answers the wrapped factory's code, priority and availability.

#include "System/Media/Filter/MediaFilter.h"
#include "System/Media/Inventory/ComponentFactory.h"

namespace Corvane::Mox::WFL {

template <class F>
class CMediaFilterFactory : public CComponentFactory<CMediaFilter> {
 public:
  // The wrapped factory is acquired.
  explicit CMediaFilterFactory(F* factory) : CComponentFactory<CMediaFilter>(factory->GetCode()), factory_(factory) {
    factory_->Acquire();
    SetPriority(factory_->GetPriority());
    SetAvailable(factory_->IsAvailable());
  }
  ~CMediaFilterFactory() override { factory_->Release(); }

  CMediaFilter* CreateInstance() const override { return factory_->CreateInstance(); }
  F* GetFactory() const { return factory_; }  // borrowed

 private:
  F* factory_;
};

}  // namespace Corvane::Mox::WFL
