#include "System/Xml/XmlDocument.h"

#include <climits>
#include <fstream>
#include <iterator>
#include <string>
#include <unordered_set>
#include <vector>

#include "System/ByteArray.h"
#include "System/IO/Stream.h"
#include "System/Text.h"
#include "System/Xml/XmlElement.h"
#include "System/Xml/XmlLibrary.h"

namespace Corvane::Mox {

struct CXmlDocument::State {
  // Nodes of this document that are not part of its tree.
  std::unordered_set<xmlNodePtr> detached;
  // Documents that received nodes from this one.
  std::vector<RObject<CXmlDocument>> keptAlive;
};

namespace {

xmlDocPtr NewEmptyDocument() {
  XmlLibrary::EnsureInitialized();
  xmlDocPtr document = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  if (!document) throw ResultOutOfMemory();
  return document;
}

}  // namespace

CXmlDocument::CXmlDocument() : CXmlDocument(NewEmptyDocument()) {}

CXmlDocument::CXmlDocument(_xmlDoc* document)
    : CXmlNode(TypeCode, DocumentNode, reinterpret_cast<xmlNodePtr>(document), nullptr),
      doc_(document),
      state_(std::make_unique<State>()) {
  doc_->_private = this;
}

CXmlDocument::~CXmlDocument() {
  // Detached nodes first: their names may live in the document's dictionary.
  for (xmlNodePtr node : state_->detached)
    if (!node->parent && node->doc == doc_) xmlFreeNode(node);
  state_->detached.clear();
  doc_->_private = nullptr;
  xmlFreeDoc(doc_);
}

CXmlDocument* CXmlDocument::FromXml(_xmlDoc* document) {
  return document ? static_cast<CXmlDocument*>(document->_private) : nullptr;
}

void CXmlDocument::KeepDetached(_xmlNode* node) {
  if (node) state_->detached.insert(node);
}

void CXmlDocument::ForgetDetached(_xmlNode* node) { state_->detached.erase(node); }

void CXmlDocument::KeepAlive(CXmlDocument* other) {
  if (!other || other == this) return;
  for (const auto& kept : state_->keptAlive)
    if (kept.Get() == other) return;
  other->Acquire();
  state_->keptAlive.emplace_back(other);
}

bool CXmlDocument::KeepsAlive(const CXmlDocument* other) const {
  // The keep-alive links never form a cycle, so a plain walk ends.
  if (other == this) return true;
  for (const auto& kept : state_->keptAlive)
    if (kept->KeepsAlive(other)) return true;
  return false;
}

CXmlDocument* CXmlDocument::Create() { return new CXmlDocument(); }

Result CXmlDocument::CreateWithText(const char* utf8, int length, CXmlDocument*& out) {
  out = nullptr;
  xmlDocPtr document = nullptr;
  Result result = XmlLibrary::ParseMemory(utf8, length, document);
  if (result.Failed()) return result;
  out = new CXmlDocument(document);
  return ResultOK();
}

Result CXmlDocument::CreateWithString(CString* text, CXmlDocument*& out) {
  out = nullptr;
  if (!text) return ResultArgumentNull("text must not be nullptr");
  const char* chars = text->GetChars();
  return CreateWithText(chars, static_cast<int>(std::char_traits<char>::length(chars)), out);
}

Result CXmlDocument::CreateWithBytes(CByteArray* bytes, CXmlDocument*& out) {
  out = nullptr;
  if (!bytes) return ResultArgumentNull("bytes must not be nullptr");
  const char* data = bytes->GetLength() > 0 ? reinterpret_cast<const char*>(bytes->GetData()) : "";
  return CreateWithText(data, bytes->GetLength(), out);
}

Result CXmlDocument::CreateWithFileAtPath(const char* path, CXmlDocument*& out) {
  out = nullptr;
  if (!path) return ResultArgumentNull("path must not be nullptr");
  std::ifstream file(path, std::ios::binary);
  if (!file) return ResultFileNotFound("%s", path);
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (file.bad()) return ResultIOError("cannot read %s", path);
  if (text.size() > static_cast<std::size_t>(INT_MAX)) return ResultNotSupported("%s is too large", path);
  return CreateWithText(text.data(), static_cast<int>(text.size()), out);
}

CXmlDocument* CXmlDocument::CreateWithString(CString* text) {
  CXmlDocument* document = nullptr;
  CreateWithString(text, document);
  return document;
}

CXmlDocument* CXmlDocument::CreateWithBytes(CByteArray* bytes) {
  CXmlDocument* document = nullptr;
  CreateWithBytes(bytes, document);
  return document;
}

CXmlDocument* CXmlDocument::CreateWithFileAtPath(const char* path) {
  CXmlDocument* document = nullptr;
  CreateWithFileAtPath(path, document);
  return document;
}

Result CXmlDocument::GetString(int options, CString*& out) const {
  out = nullptr;
  std::string text;
  Result result = XmlLibrary::SaveDocument(doc_, options, text);
  if (result.Failed()) return result;
  out = new CString(text.c_str(), static_cast<int>(text.size()));
  return ResultOK();
}

CString* CXmlDocument::GetString(int options) const {
  CString* text = nullptr;
  GetString(options, text);
  return text;
}

CByteArray* CXmlDocument::GetBytes(int options) const {
  std::string text;
  if (XmlLibrary::SaveDocument(doc_, options, text).Failed()) return nullptr;
  return new CByteArray(reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
}

Result CXmlDocument::Save(CStream* stream, int options) const {
  if (!stream) return ResultArgumentNull("stream must not be nullptr");
  std::string text;
  Result result = XmlLibrary::SaveDocument(doc_, options, text);
  if (result.Failed()) return result;
  return stream->Write(reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
}

CXmlElement* CXmlDocument::GetRootElement() const {
  xmlNodePtr root = xmlDocGetRootElement(doc_);
  return root ? static_cast<CXmlElement*>(Wrap(root, const_cast<CXmlDocument*>(this))) : nullptr;
}

}  // namespace Corvane::Mox
