#pragma once
// CXmlSerialization: the base of classes that read and write themselves as
// an XML document. A subclass fills a new document in Write and reads the
// root element back in Read (or Parse); the base turns that into text,
// bytes or stream content and back.

#include "System/Object.h"

namespace Corvane::Mox {

class CByteArray;
class CStream;
class CXmlDocument;
class CXmlElement;

class CXmlSerialization : public CObject {
 public:
  explicit CXmlSerialization(unsigned int type);

  // Fills document (new and empty) with this object.
  virtual Result Write(CXmlDocument* document);
  // Reads this object from the root element of a parsed document; the
  // default hands the element to Parse.
  virtual Result Read(CXmlElement* root);
  virtual Result Parse(CXmlElement* root);

  // options are CXmlDocument::Options.
  Result Serialize(CString*& out, int options);
  Result Serialize(CByteArray*& out, int options);
  Result Serialize(CStream* stream, int options);
  // Parse failures come back as ResultFormatError with the parser's message.
  Result Deserialize(CString* text);
  Result Deserialize(CByteArray* bytes);
  Result Deserialize(CStream* stream);

 private:
  // A new document filled by Write.
  Result WriteDocument(CXmlDocument*& document);
  Result ReadDocument(CXmlDocument* document);
};

}  // namespace Corvane::Mox
