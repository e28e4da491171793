#include "System/Media/Wav/AdmDocument.h"

#include <cstring>

#include "System/Text.h"
#include "System/Xml/XmlDocument.h"
#include "System/Xml/XmlElement.h"

namespace Corvane::Mox {

CAdmDocument::CAdmDocument() : CXmlSerialization(TypeCode), document_(nullptr) {}

CAdmDocument::~CAdmDocument() {
  if (document_) document_->Release();
}

Result CAdmDocument::Parse(CXmlElement* root) {
  if (!root) return ResultArgumentNull();
  RObject<CString> name(root->GetLocalName());
  if (!name || (std::strcmp(name->GetChars(), "ebuCoreMain") != 0 &&
                std::strcmp(name->GetChars(), "audioFormatExtended") != 0))
    return ResultFormatError("not an ADM document");
  CXmlDocument* document = root->GetDocument();
  if (!document) return ResultFormatError("the root element has no document");
  document->Acquire();
  if (document_) document_->Release();
  document_ = document;
  return Result();
}

Result CAdmDocument::Write(CXmlDocument* document) {
  if (!document) return ResultArgumentNull();
  if (!document_) return ResultInvalidOperation("no ADM document");
  RObject<CString> text;
  Result result = document_->GetString(0, text.Out());
  if (result.Failed()) return result;
  RObject<CXmlDocument> copy;
  result = CXmlDocument::CreateWithString(text.Get(), copy.Out());
  if (result.Failed()) return result;
  RObject<CXmlElement> root(copy->GetRootElement());
  if (!root) return ResultFormatError("empty ADM document");
  // The copy's root belongs to the copy: detached, it can move to document.
  result = root->SetParent(nullptr);
  return result.Succeeded() ? document->AddChildElement(root.Get()) : result;
}

CXmlDocument* CAdmDocument::GetXmlDocument() const {
  if (document_) document_->Acquire();
  return document_;
}

}  // namespace Corvane::Mox
