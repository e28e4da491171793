#pragma once
// CMediaFilterTransformInventory: the process-wide list of the filters the
// topology may insert on its own to join two components whose media differ:
// the video and audio format converters, every decompressor and the caption
// bitmap renderers (PopulateInventories). Resizers, frame-rate converters,
// compressors and analyzers are never inserted; scripts name them.
// Filled once before topologies are built and read without locks.

#include "System/Collections/List.h"
#include "System/Media/Inventory/ComponentFactory.h"

namespace Corvane::Mox {
class CMediaFilter;
class CMediaProperties;
}  // namespace Corvane::Mox

namespace Corvane::Mox::WFL {

class CMediaFilterTransformInventory {
 public:
  using Factory = CComponentFactory<CMediaFilter>;

  // Wraps the available factories of the family registries that may be
  // inserted. Calling it again appends them again.
  static void PopulateInventories();
  // The factories in insertion order (borrowed).
  static CList<Factory>* GetFactories();
  static Result AddFactory(Factory* factory);
  // A new filter from the first factory of the code, or null.
  static CMediaFilter* CreateInstance(unsigned int code);
  // New instances of every factory whose filter accepts the input, best
  // first: by the factory's priority when it has one, else by the filter's
  // score; equal priorities in the queue's order.
  static CList<CMediaFilter>* GetValidComponents(const CMediaProperties* input);
  // Empties the inventory (hosts and tests that build several inventories).
  static void Clear();
};

}  // namespace Corvane::Mox::WFL

// Fills the transform inventory; hosts call it once at start-up.
extern "C" void PopulateInventories();
