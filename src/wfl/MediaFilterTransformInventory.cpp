#include "wfl/MediaFilterTransformInventory.h"

#include "System/Collections/PriorityQueue.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "wfl/MediaFilterFactory.h"

namespace Corvane::Mox::WFL {

namespace {

CList<CMediaFilterTransformInventory::Factory>* Factories() {
  // Created once, thread-safely; lives for the process.
  static auto* factories = new CList<CMediaFilterTransformInventory::Factory>();
  return factories;
}

bool AnyCode(unsigned int) { return true; }

// The caption and subtitle bitmap renderers.
bool IsBitmapRenderer(unsigned int code) {
  static constexpr unsigned int kRenderers[] = {
      FourCC("arbm"), FourCC("bmvc"), FourCC("c8bm"), FourCC("ccbm"), FourCC("cfic"),
      FourCC("dcbm"), FourCC("dvbm"), FourCC("lcbm"), FourCC("pabm"), FourCC("srbm"),
      FourCC("stbm"), FourCC("tebm"), FourCC("ttbm"), FourCC("txbm"), FourCC("vtbm")};
  for (unsigned int renderer : kRenderers)
    if (code == renderer) return true;
  return false;
}

template <class Family>
void Take(bool (*accept)(unsigned int)) {
  using FamilyFactory = CComponentFactory<Family>;
  for (FamilyFactory* factory : *CFamilyInventory<Family>::GetFactories()) {
    if (!factory->IsAvailable() || !accept(factory->GetCode())) continue;
    RObject<CMediaFilterTransformInventory::Factory> wrapped(new CMediaFilterFactory<FamilyFactory>(factory));
    CMediaFilterTransformInventory::AddFactory(wrapped);
  }
}

}  // namespace

void CMediaFilterTransformInventory::PopulateInventories() {
  Take<CVideoConverter>([](unsigned int code) { return code == FourCC("vfc "); });
  Take<CVideoDecompressor>(&AnyCode);
  Take<CAudioConverter>([](unsigned int code) { return code == FourCC("afc "); });
  Take<CAudioDecompressor>(&AnyCode);
  Take<CSubtitleConverter>(&IsBitmapRenderer);
}

CList<CMediaFilterTransformInventory::Factory>* CMediaFilterTransformInventory::GetFactories() { return Factories(); }

Result CMediaFilterTransformInventory::AddFactory(Factory* factory) {
  if (!factory) return ResultArgumentNull();
  return Factories()->Add(factory);
}

void CMediaFilterTransformInventory::Clear() { Factories()->Clear(); }

CMediaFilter* CMediaFilterTransformInventory::CreateInstance(unsigned int code) {
  for (Factory* factory : *Factories())
    if (factory->GetCode() == code) return factory->CreateInstance();
  return nullptr;
}

CList<CMediaFilter>* CMediaFilterTransformInventory::GetValidComponents(const CMediaProperties* input) {
  RObject<CMaxPriorityQueue<unsigned long long, CMediaFilter>> queue(
      new CMaxPriorityQueue<unsigned long long, CMediaFilter>(32));
  for (Factory* factory : *Factories()) {
    RObject<CMediaFilter> filter(factory->CreateInstance());
    if (!filter) continue;
    const int score = filter->Evaluate(input);
    if (score == 0) continue;
    const int priority = factory->GetPriority();
    queue->Enqueue(static_cast<unsigned long long>(priority != 0 ? priority : score), filter).ThrowIfFailed();
  }
  auto* list = new CList<CMediaFilter>();
  while (queue->GetCount() > 0) {
    RObject<CMediaFilter> filter(queue->Dequeue(nullptr));
    list->Add(filter);
  }
  return list;
}

}  // namespace Corvane::Mox::WFL

extern "C" void PopulateInventories() { Corvane::Mox::WFL::CMediaFilterTransformInventory::PopulateInventories(); }
