#pragma once
// The inventory catalog: everything registered, by category, with display
// names and availability, for hosts that list what the library can do.

#include "System/Collections/Dictionary.h"
#include "System/Collections/List.h"
#include "System/Text.h"

namespace Corvane::Mox {

// One registered component: its code (the entry's type id), display name
// and whether this build can create it.
class CInventoryCatalogEntry : public CObject {
 public:
  CInventoryCatalogEntry(unsigned int code, const char* name, bool available);
  ~CInventoryCatalogEntry() override;

  unsigned int GetCode() const { return GetType(); }
  CString* GetName() const { return name_; }  // borrowed
  bool IsAvailable() const { return available_; }

 private:
  CString* name_;
  bool available_;
};

using CInventoryCatalog = CDictionary<CString, CList<CInventoryCatalogEntry>>;

}  // namespace Corvane::Mox

// A new catalog (the caller releases it): one list per category in a fixed
// order, "Video Analyzers" first and "Packagers" last; a family without
// registrations has an empty list; a code without a display name is named
// "(null)".
extern "C" Corvane::Mox::CInventoryCatalog* GetInventoryCatalog();
