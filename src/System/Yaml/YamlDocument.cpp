#include "System/Yaml/YamlDocument.h"

#include <climits>
#include <fstream>
#include <iterator>
#include <string>

#include "System/ByteArray.h"
#include "System/Text.h"
#include "System/Yaml/YamlReader.h"

namespace Corvane::Mox {

CYamlDocument::CYamlDocument() : CYamlNode(TypeCode, nullptr) {}

CYamlDocument::CYamlDocument(CString* text) : CYamlDocument() {
  if (!text) return;
  const char* chars = text->GetChars();
  CYamlReader::Read(this, CYamlReader::SplitLines(chars, std::char_traits<char>::length(chars)), 0);
}

bool CYamlDocument::IsType(unsigned int type) const { return type == TypeCode || CYamlNode::IsType(type); }

CYamlDocument* CYamlDocument::Create() { return new CYamlDocument(); }

Result CYamlDocument::CreateWithText(const char* utf8, int length, CYamlDocument*& out) {
  out = nullptr;
  if (!utf8 || length < 0) return ResultArgumentNull("YAML text must not be nullptr");
  RObject<CYamlDocument> document(new CYamlDocument());
  try {
    CYamlReader::Read(document, CYamlReader::SplitLines(utf8, static_cast<std::size_t>(length)), 0);
  } catch (const Result& failure) {
    return failure;
  }
  out = document.Detach();
  return ResultOK();
}

Result CYamlDocument::CreateWithString(CString* text, CYamlDocument*& out) {
  out = nullptr;
  if (!text) return ResultArgumentNull("text must not be nullptr");
  const char* chars = text->GetChars();
  return CreateWithText(chars, static_cast<int>(std::char_traits<char>::length(chars)), out);
}

Result CYamlDocument::CreateWithBytes(CByteArray* bytes, CYamlDocument*& out) {
  out = nullptr;
  if (!bytes) return ResultArgumentNull("bytes must not be nullptr");
  // Bytes need not be valid UTF-8 or free of zeros: go through a string.
  RObject<CString> text(new CString(reinterpret_cast<const char*>(bytes->GetData()), bytes->GetLength()));
  return CreateWithString(text, out);
}

Result CYamlDocument::CreateWithFileAtPath(const char* path, CYamlDocument*& out) {
  out = nullptr;
  if (!path) return ResultArgumentNull("path must not be nullptr");
  std::ifstream file(path, std::ios::binary);
  if (!file) return ResultFileNotFound("%s", path);
  std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (file.bad()) return ResultIOError("cannot read %s", path);
  if (content.size() > static_cast<std::size_t>(INT_MAX)) return ResultNotSupported("%s is too large", path);
  RObject<CString> text(new CString(content.data(), static_cast<int>(content.size())));
  return CreateWithString(text, out);
}

CYamlDocument* CYamlDocument::CreateWithString(CString* text) {
  CYamlDocument* document = nullptr;
  CreateWithString(text, document);
  return document;
}

CYamlDocument* CYamlDocument::CreateWithBytes(CByteArray* bytes) {
  CYamlDocument* document = nullptr;
  CreateWithBytes(bytes, document);
  return document;
}

CYamlDocument* CYamlDocument::CreateWithFileAtPath(const char* path) {
  CYamlDocument* document = nullptr;
  CreateWithFileAtPath(path, document);
  return document;
}

CString* CYamlDocument::GetString() const { return CYamlNode::GetString(0, false); }

CByteArray* CYamlDocument::GetBytes() const {
  RObject<CString> text(GetString());
  const char* chars = text->GetChars();
  return new CByteArray(reinterpret_cast<const unsigned char*>(chars),
                        static_cast<int>(std::char_traits<char>::length(chars)));
}

}  // namespace Corvane::Mox
