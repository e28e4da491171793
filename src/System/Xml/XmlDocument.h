#pragma once
// CXmlDocument: a libxml2 document and the root of its node wrappers. It owns
// the libxml2 tree and every node that was taken out of it (or created for
// it and not yet added), and frees them all when the last reference goes.
// Parsing and saving never print: libxml2's reports become Results.

#include <memory>

#include "System/Xml/XmlNode.h"

struct _xmlDoc;

namespace Corvane::Mox {

class CByteArray;
class CStream;

class CXmlDocument : public CXmlNode {
 public:
  static constexpr unsigned int TypeCode = FourCC("<!DO");

  // libxml2's save options, passed through unchanged.
  enum Options : int {
    None = 0,
    Format = 1,          // indent the output
    NoDeclaration = 2,   // leave out the XML declaration
    NoEmptyTags = 4,     // write <a></a> instead of <a/>
    NoXhtml = 8,
    Xhtml = 16,
    AsXml = 32,
    AsHtml = 64,
    WhitespaceNonSignificant = 128,
  };

  // An empty document (no root element).
  CXmlDocument();
  ~CXmlDocument() override;

  static CXmlDocument* Create();
  // The parsed document (acquired), or null when the text is not well-formed.
  static CXmlDocument* CreateWithString(CString* text);
  static CXmlDocument* CreateWithBytes(CByteArray* bytes);
  static CXmlDocument* CreateWithFileAtPath(const char* path);
  // The same with the reason of a failure: ResultFormatError carrying the
  // parser's message and line, ResultFileNotFound, ResultArgumentNull.
  static Result CreateWithString(CString* text, CXmlDocument*& out);
  static Result CreateWithBytes(CByteArray* bytes, CXmlDocument*& out);
  static Result CreateWithText(const char* utf8, int length, CXmlDocument*& out);
  static Result CreateWithFileAtPath(const char* path, CXmlDocument*& out);

  // The document as UTF-8 text (acquired), or null when saving fails.
  CString* GetString(int options) const;
  CByteArray* GetBytes(int options) const;
  Result GetString(int options, CString*& out) const;
  Result Save(CStream* stream, int options) const;

  // The root element (acquired), or null.
  CXmlElement* GetRootElement() const;
  _xmlDoc* GetXmlDocument() const { return doc_; }

 private:
  friend class CXmlNode;

  explicit CXmlDocument(_xmlDoc* document);
  // The wrapper object of a libxml2 document.
  static CXmlDocument* FromXml(_xmlDoc* document);
  // Detached nodes are kept (and freed) by the document.
  void KeepDetached(_xmlNode* node);
  void ForgetDetached(_xmlNode* node);
  // Keeping another document alive: nodes moved into it may still be
  // reached through wrappers that hold this one.
  void KeepAlive(CXmlDocument* other);
  bool KeepsAlive(const CXmlDocument* other) const;

  struct State;
  _xmlDoc* doc_;
  std::unique_ptr<State> state_;
};

}  // namespace Corvane::Mox
