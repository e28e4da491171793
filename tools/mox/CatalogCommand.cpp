// mox catalog: every component family, code and display name the library
// registers, and whether this build can create it.
#include <cstdio>
#include <string>

#include <Mox.h>

#include "Commands.h"
#include "JsonText.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

struct CatalogRow {
  std::string family;
  std::string code;
  std::string name;
  bool available;
};

template <class Visit>
void ForEachRow(CInventoryCatalog* catalog, Visit visit) {
  for (int i = 0; i < catalog->GetCount(); ++i) {
    CString* key = nullptr;
    CList<CInventoryCatalogEntry>* list = nullptr;
    if (catalog->GetKeyAndValue(i, key, list).Failed()) continue;
    RObject<CString> family(key);
    RObject<CList<CInventoryCatalogEntry>> entries(list);
    for (CInventoryCatalogEntry* entry : *entries) {
      char code[5];
      FourCCToChars(entry->GetCode(), code);
      visit(CatalogRow{family->GetChars(), std::string(code, 4), entry->GetName()->GetChars(), entry->IsAvailable()});
    }
  }
}

void PrintJson(CInventoryCatalog* catalog) {
  bool first = true;
  std::printf("[");
  ForEachRow(catalog, [&](const CatalogRow& row) {
    std::printf("%s\n  {\"family\": %s, \"code\": %s, \"name\": %s, \"available\": %s}", first ? "" : ",",
                JsonQuote(row.family.c_str()).c_str(), JsonQuote(row.code.c_str()).c_str(),
                JsonQuote(row.name.c_str()).c_str(), row.available ? "true" : "false");
    first = false;
  });
  std::printf("\n]\n");
}

void PrintTable(CInventoryCatalog* catalog) {
  std::printf("%-28s %-6s %-56s %s\n", "FAMILY", "CODE", "NAME", "AVAILABLE");
  ForEachRow(catalog, [](const CatalogRow& row) {
    // Codes are quoted so that trailing spaces stay visible.
    std::printf("%-28s '%s' %-56s %s\n", row.family.c_str(), row.code.c_str(), row.name.c_str(),
                row.available ? "yes" : "no");
  });
}

}  // namespace

int RunCatalog(const CatalogOptions& options) {
  RObject<CInventoryCatalog> catalog(GetInventoryCatalog());
  if (options.json) {
    PrintJson(catalog);
  } else {
    PrintTable(catalog);
  }
  return ExitSuccess;
}

}  // namespace MoxTool
