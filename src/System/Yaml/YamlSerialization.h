#pragma once
// IYamlSerialization: the mixin of classes that read and write themselves as
// a YAML document of the library's subset. A class writes its attributes and
// children into a node in Write and reads them back in Read (or Parse).

#include "System/Result.h"

namespace Corvane::Mox {

class CByteArray;
class CStream;
class CString;
class CYamlDocument;
class CYamlNode;

class IYamlSerialization {
 public:
  IYamlSerialization() = default;
  IYamlSerialization(const IYamlSerialization&) = delete;
  IYamlSerialization& operator=(const IYamlSerialization&) = delete;
  virtual ~IYamlSerialization() = default;

  // Reads this object from a node; the default hands it to Parse.
  virtual Result Read(CYamlNode* node);
  virtual Result Parse(CYamlNode* node);
  // Writes this object into node.
  virtual Result Write(CYamlNode* node);
  // Writes this object as the root of document; the default is Write(node).
  virtual Result Write(CYamlDocument* document);

  // The object as YAML text or bytes (acquired), null when Write fails.
  CString* GetString();
  CByteArray* GetBytes();
  Result Serialize(CStream* stream);
  // Reads the whole stream as a document and the object from its root.
  Result Deserialize(CStream* stream);

 private:
  Result WriteDocument(CYamlDocument*& document);
};

}  // namespace Corvane::Mox
