#pragma once
// IPropertiesDocumentation: components describe their named properties as a
// property bag that hosts can print or inspect:
//
//   "brief"         one line
//   "details"       longer text (optional)
//   "comments"      a bag (empty unless a namespace has remarks)
//   "properties"    { name: { "type", "brief", ["details"], ["note"] } }
//   "enumerations"  { name: { "brief", "comments", "values": { value name: { "brief", "value" } } } }
//
// The property names of every component live in generated namespaces (see
// src/gen/): each is a struct whose static PropertyName members are the
// names and whose CreateDocumentation() builds the bag above from the same
// data table, so names and documentation cannot drift apart.

namespace Corvane::Mox {

class CProperties;

class IPropertiesDocumentation {
 public:
  virtual ~IPropertiesDocumentation() = default;

  // The documentation of this component's properties (acquired), or null
  // when it documents none.
  virtual CProperties* GetDocumentation() const { return nullptr; }

  // The documentation of one generated namespace (acquired).
  template <class Namespace>
  static CProperties* GetDocumentationT() {
    return Namespace::CreateDocumentation();
  }
};

// Builds one documentation bag in the shape above; the generated tables
// drive it row by row.
class CPropertiesDocumentationBuilder {
 public:
  // details may be null.
  CPropertiesDocumentationBuilder(const char* brief, const char* details);
  ~CPropertiesDocumentationBuilder();
  CPropertiesDocumentationBuilder(const CPropertiesDocumentationBuilder&) = delete;
  CPropertiesDocumentationBuilder& operator=(const CPropertiesDocumentationBuilder&) = delete;

  // details and note may be null (then absent from the bag).
  void AddProperty(const char* name, const char* type, const char* brief, const char* details, const char* note);
  void BeginEnumeration(const char* name, const char* brief);
  void AddValue(const char* name, int value, const char* brief);
  void EndEnumeration();

  // The finished bag (acquired); the builder is empty afterwards.
  CProperties* Detach();

 private:
  CProperties* root_;
  CProperties* properties_;
  CProperties* enumerations_;
  CProperties* enumeration_;  // the one being filled, or null
  CProperties* values_;
  const char* enumerationName_;
};

// The generated namespaces by qualified name ("CodeBookProperty::MediaFilter").
struct PropertiesDocumentationEntry {
  const char* name;
  CProperties* (*create)();
};

class PropertiesDocumentation {
 public:
  // Called by the generated tables at library load.
  static void Register(const PropertiesDocumentationEntry* entries, int count);
  static int GetCount();
  // The qualified name of entry i, or null.
  static const char* GetName(int index);
  // The documentation of a namespace by qualified name (acquired), or null.
  static CProperties* Create(const char* qualifiedName);
};

}  // namespace Corvane::Mox
