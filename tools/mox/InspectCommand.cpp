// mox inspect: what one component is: its family, code, name and
// availability, its documentation with every property (type, default, text)
// and enumeration, and for filters with a conversion table the formats they
// take and make. A code registered in several families is listed for each.
#include <strings.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include <Mox.h>

#include "Commands.h"
#include "FourCharacterCode.h"
#include "JsonText.h"
#include "System/Media/Inventory/ComponentNames.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

struct Property {
  std::string name, type, brief, details, note, defaultValue;
};

struct Enumeration {
  std::string name, brief;
  std::vector<std::pair<std::string, int>> values;
  std::vector<std::string> briefs;
};

struct Description {
  std::string family, code, name, brief;
  bool available = false;
  std::vector<Property> properties;
  std::vector<Enumeration> enumerations;
  std::vector<std::string> inputFormats, outputFormats;
};

// One registered family: its catalog category, class name and how to make
// one of its components.
struct Family {
  const char* category;
  const char* className;
  bool filters;
  CObject* (*create)(unsigned int code);
};

template <class T>
CObject* Create(unsigned int code) {
  return CFamilyInventory<T>::CreateAvailable(code);
}

const Family kFamilies[] = {
#define MOX_COMPONENT_FAMILY(Class, Category, NameTable) \
  {Category, #Class, std::is_base_of_v<CMediaFilter, Class>, &Create<Class>},
#include "System/Media/Inventory/ComponentFamilies.def"
#undef MOX_COMPONENT_FAMILY
};

std::string Text(CString* text) { return text ? text->GetChars() : ""; }

std::string StringMember(CProperties* bag, const char* name) {
  CString* value = nullptr;
  if (!bag || bag->GetProperty(name, value).Failed()) return "";
  RObject<CString> held(value);
  return Text(value);
}

CProperties* BagMember(CProperties* bag, const char* name) {
  CProperties* value = nullptr;
  if (!bag || bag->GetProperty(name, value).Failed()) return nullptr;
  return value;
}

// Calls visit(name, member bag) for each member of a bag of bags.
template <class Visit>
void ForEachBag(CProperties* bag, Visit visit) {
  if (!bag) return;
  for (int i = 0; i < bag->GetPropertyCount(); ++i) {
    RObject<CString> key(bag->GetPropertyName(i));
    if (!key) continue;
    RObject<CProperties> member(BagMember(bag, key->GetChars()));
    visit(key->GetChars(), member.Get());
  }
}

// The code's characters, or its hexadecimal value when some are not
// printable (the numbered packed RGB codes such as 0x00000018).
std::string FourText(unsigned int code) {
  char text[5];
  FourCCToChars(code, text);
  for (int i = 0; i < 4; ++i)
    if (static_cast<unsigned char>(text[i]) < 0x20 || static_cast<unsigned char>(text[i]) > 0x7E) {
      char hex[11];
      std::snprintf(hex, sizeof(hex), "0x%08x", code);
      return hex;
    }
  return std::string(text, 4);
}

// The value the component holds for a property, as text; "(none)" unset.
std::string DefaultOf(CObject* component, const char* name) {
  auto* bag = dynamic_cast<IProperties*>(component);
  RObject<CString> key(CString::WithString(name));
  CVariant* value = nullptr;
  if (!bag || bag->GetProperty(key.Get(), value).Failed() || !value) return "(none)";
  RObject<CVariant> held(value);
  RObject<CString> text(value->ToString());
  return Text(text);
}

void Document(CProperties* documentation, CObject* component, Description& description) {
  description.brief = StringMember(documentation, "brief");
  RObject<CProperties> properties(BagMember(documentation, "properties"));
  ForEachBag(properties, [&](const char* name, CProperties* entry) {
    description.properties.push_back(Property{name, StringMember(entry, "type"), StringMember(entry, "brief"),
                                              StringMember(entry, "details"), StringMember(entry, "note"),
                                              DefaultOf(component, name)});
  });
  RObject<CProperties> enumerations(BagMember(documentation, "enumerations"));
  ForEachBag(enumerations, [&](const char* name, CProperties* entry) {
    Enumeration enumeration{name, StringMember(entry, "brief"), {}, {}};
    RObject<CProperties> values(BagMember(entry, "values"));
    ForEachBag(values, [&](const char* valueName, CProperties* value) {
      int number = 0;
      if (value) value->GetProperty("value", number);
      enumeration.values.emplace_back(valueName, number);
      enumeration.briefs.push_back(StringMember(value, "brief"));
    });
    description.enumerations.push_back(std::move(enumeration));
  });
}

// The documentation of a component: its own, or for one this build cannot
// create, its property namespace looked up by class name.
CProperties* DocumentationOf(CObject* component, const Family& family, unsigned int code) {
  if (auto* documented = dynamic_cast<IPropertiesDocumentation*>(component)) {
    if (CProperties* own = documented->GetDocumentation()) return own;
  }
  const ComponentNameSpace space = family.filters ? ComponentNameSpace::Filter : ComponentNameSpace::Container;
  const char* className = FindComponentClassName(space, code);
  const std::string prefix = family.filters ? "CodeBookProperty::" : "ContainerProperty::";
  CProperties* own = className && className[0] == 'C'
                         ? PropertiesDocumentation::Create((prefix + (className + 1)).c_str())
                         : nullptr;
  // Every filter has at least the properties of the filter base.
  if (!own && family.filters) own = PropertiesDocumentation::Create("CodeBookProperty::MediaFilter");
  return own;
}

template <class Kind>
void ListTableFormats(CMediaFilter* filter, Description& description) {
  auto* kind = dynamic_cast<Kind*>(filter);
  if (!kind || !kind->GetConfigurationTable()) return;
  RObject<CFormatList> inputs(kind->GetInputFormats());
  for (CValue<unsigned int>* format : *inputs) description.inputFormats.push_back(FourText(format->GetValue()));
  RObject<CFormatList> outputs(kind->GetTableOutputFormats());
  for (CValue<unsigned int>* format : *outputs) description.outputFormats.push_back(FourText(format->GetValue()));
}

Description Describe(const Family& family, CInventoryCatalogEntry* entry) {
  Description description;
  description.family = family.category;
  description.code = FourText(entry->GetCode());
  description.name = Text(entry->GetName());
  description.available = entry->IsAvailable();
  RObject<CObject> component(entry->IsAvailable() ? family.create(entry->GetCode()) : nullptr);
  RObject<CProperties> documentation(DocumentationOf(component, family, entry->GetCode()));
  if (documentation) Document(documentation, component, description);
  if (auto* filter = dynamic_cast<CMediaFilter*>(component.Get())) {
    ListTableFormats<CVideoFilter>(filter, description);
    ListTableFormats<CAudioFilter>(filter, description);
    ListTableFormats<CSubtitleFilter>(filter, description);
  }
  return description;
}

std::string Joined(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "'" : ", '") + item + "'";
  return text.empty() ? "(none)" : text;
}

void PrintText(const Description& d) {
  std::printf("'%s' %s\n", d.code.c_str(), d.name.c_str());
  std::printf("  family:      %s\n", d.family.c_str());
  std::printf("  available:   %s\n", d.available ? "yes" : "no");
  std::printf("  brief:       %s\n", d.brief.empty() ? "(undocumented)" : d.brief.c_str());
  if (!d.properties.empty()) std::printf("  properties:\n");
  for (const Property& p : d.properties) {
    std::printf("    %s (%s), default %s%s%s\n      %s", p.name.c_str(), p.type.c_str(), p.defaultValue.c_str(),
                p.note.empty() ? "" : ", ", p.note.c_str(), p.brief.c_str());
    if (p.brief.empty() || p.brief.back() != '\n') std::printf("\n");
  }
  if (!d.enumerations.empty()) std::printf("  enumerations:\n");
  for (const Enumeration& e : d.enumerations) {
    std::printf("    %s: %s\n", e.name.c_str(), e.brief.c_str());
    for (size_t i = 0; i < e.values.size(); ++i)
      std::printf("      %s = %d  %s\n", e.values[i].first.c_str(), e.values[i].second, e.briefs[i].c_str());
  }
  if (!d.inputFormats.empty()) std::printf("  input formats:  %s\n", Joined(d.inputFormats).c_str());
  if (!d.outputFormats.empty()) std::printf("  output formats: %s\n", Joined(d.outputFormats).c_str());
}

std::string JsonList(const std::vector<std::string>& items) {
  std::string text = "[";
  for (size_t i = 0; i < items.size(); ++i) text += (i ? ", " : "") + JsonQuote(items[i].c_str());
  return text + "]";
}

void PrintJson(const std::vector<Description>& descriptions) {
  std::printf("[");
  for (size_t n = 0; n < descriptions.size(); ++n) {
    const Description& d = descriptions[n];
    std::printf("%s\n  {\"family\": %s, \"code\": %s, \"name\": %s, \"available\": %s, \"brief\": %s,\n   \"properties\": [",
                n ? "," : "", JsonQuote(d.family.c_str()).c_str(), JsonQuote(d.code.c_str()).c_str(),
                JsonQuote(d.name.c_str()).c_str(), d.available ? "true" : "false", JsonQuote(d.brief.c_str()).c_str());
    for (size_t i = 0; i < d.properties.size(); ++i) {
      const Property& p = d.properties[i];
      std::printf("%s{\"name\": %s, \"type\": %s, \"default\": %s, \"brief\": %s, \"note\": %s}", i ? ", " : "",
                  JsonQuote(p.name.c_str()).c_str(), JsonQuote(p.type.c_str()).c_str(),
                  JsonQuote(p.defaultValue.c_str()).c_str(), JsonQuote(p.brief.c_str()).c_str(),
                  JsonQuote(p.note.c_str()).c_str());
    }
    std::printf("],\n   \"enumerations\": [");
    for (size_t i = 0; i < d.enumerations.size(); ++i) {
      const Enumeration& e = d.enumerations[i];
      std::printf("%s{\"name\": %s, \"brief\": %s, \"values\": {", i ? ", " : "", JsonQuote(e.name.c_str()).c_str(),
                  JsonQuote(e.brief.c_str()).c_str());
      for (size_t v = 0; v < e.values.size(); ++v)
        std::printf("%s%s: %d", v ? ", " : "", JsonQuote(e.values[v].first.c_str()).c_str(), e.values[v].second);
      std::printf("}}");
    }
    std::printf("],\n   \"inputFormats\": %s, \"outputFormats\": %s}", JsonList(d.inputFormats).c_str(),
                JsonList(d.outputFormats).c_str());
  }
  std::printf("\n]\n");
}

// A family given by category ("Video Converters") or class ("CVideoConverter",
// "VideoConverter"), without regard to case.
bool FamilyMatches(const Family& family, const char* wanted) {
  return !wanted || !strcasecmp(family.category, wanted) || !strcasecmp(family.className, wanted) ||
         !strcasecmp(family.className + 1, wanted);
}

}  // namespace

int RunInspect(const InspectOptions& options) {
  const char* codeText = options.code.c_str();
  const char* familyText = options.family.empty() ? nullptr : options.family.c_str();
  // "vfc" names the code "vfc "; a text no code can have matches nothing.
  unsigned int code = 0;
  ParseCode(options.code, code);
  RObject<CInventoryCatalog> catalog(GetInventoryCatalog());
  std::vector<Description> found;
  for (const Family& family : kFamilies) {
    if (!FamilyMatches(family, familyText)) continue;
    RObject<CString> category(CString::WithString(family.category));
    CList<CInventoryCatalogEntry>* raw = nullptr;
    if (catalog->Get(category, raw).Failed() || !raw) continue;
    RObject<CList<CInventoryCatalogEntry>> entries(raw);
    for (CInventoryCatalogEntry* entry : *entries)
      if (entry->GetCode() == code) found.push_back(Describe(family, entry));
  }
  if (found.empty()) {
    PrintError("inspect: no component has the code '%s'%s%s", codeText, familyText ? " in the family " : "",
               familyText ? familyText : "");
    return ExitFailure;
  }
  if (options.json) {
    PrintJson(found);
  } else {
    for (size_t i = 0; i < found.size(); ++i) {
      if (i) std::printf("\n");
      PrintText(found[i]);
    }
  }
  return ExitSuccess;
}

}  // namespace MoxTool
