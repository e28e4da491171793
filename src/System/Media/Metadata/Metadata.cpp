#include "System/Media/Metadata/Metadata.h"

#include "System/ByteArray.h"
#include "System/FourString.h"
#include "System/IO/BinaryReader.h"
#include "System/IO/BinaryWriter.h"
#include "System/IO/MemoryStream.h"
#include "System/Media/DataReference.h"
#include "System/Media/MediaBinary.h"

namespace Corvane::Mox {

CMetadataElement::CMetadataElement(unsigned int type) : CObject(type), dataReference_(nullptr) {}

CMetadataElement::~CMetadataElement() {
  if (dataReference_) dataReference_->Release();
}

Result CMetadataElement::Read(CBinaryReader*, int) { return ResultNotImplemented(); }
Result CMetadataElement::Write(CBinaryWriter*) const { return ResultNotImplemented(); }

CDataReference* CMetadataElement::GetDataReference() const {
  if (dataReference_) dataReference_->Acquire();
  return dataReference_;
}

void CMetadataElement::SetDataReference(CDataReference* reference) {
  if (reference) reference->Acquire();
  if (dataReference_) dataReference_->Release();
  dataReference_ = reference;
}

CMetadataElement* CMetadataElement::New(unsigned int) { return nullptr; }

CMetadata::CMetadata() : CObject(TypeCode), duration_(0), elements_(new CList<CMetadataElement>()) {}

CMetadata::~CMetadata() { elements_->Release(); }

int CMetadata::GetCount() const {
  CAutoLock lock(this);
  return elements_->GetCount();
}

CMetadataElement* CMetadata::GetElementAt(int index) const {
  CAutoLock lock(this);
  if (index < 0 || index >= elements_->GetCount()) return nullptr;
  CMetadataElement* element = nullptr;
  elements_->Get(index, element);
  return element;
}

CMetadataElement* CMetadata::GetElement(unsigned int type) const {
  CAutoLock lock(this);
  for (CMetadataElement* element : *elements_) {
    if (element->IsType(type)) {
      element->Acquire();
      return element;
    }
  }
  return nullptr;
}

bool CMetadata::ContainsElement(unsigned int type) const {
  RObject<CMetadataElement> element(GetElement(type));
  return element.Get() != nullptr;
}

Result CMetadata::AddElement(CMetadataElement* element) {
  if (!element) return Result();
  CAutoLock lock(this);
  if (ContainsElement(element->GetType())) return ResultFalse();
  return elements_->Add(element);
}

bool CMetadata::RemoveElement(unsigned int type) {
  CAutoLock lock(this);
  RObject<CMetadataElement> element(GetElement(type));
  return element && elements_->RemoveItem(element.Get()).Succeeded();
}

int CMetadata::GetLength() const {
  CAutoLock lock(this);
  int length = 4;
  for (CMetadataElement* element : *elements_) {
    RObject<CDataReference> reference(element->GetDataReference());
    length += reference ? 20 + element->GetLength() + reference->GetSize() : 16 + element->GetLength();
  }
  return length;
}

Result CMetadata::Write(CBinaryWriter* writer) const {
  if (!writer) return ResultArgumentNull();
  CAutoLock lock(this);
  for (CMetadataElement* element : *elements_) {
    Result result = writer->WriteFour(element->GetType());
    if (result.Succeeded()) result = writer->WriteInt32(element->GetLength());
    if (result.Succeeded()) result = writer->WriteInt32(element->IsDisplayOrder() ? 1 : 0);
    if (result.Succeeded()) result = element->Write(writer);
    if (result.Failed()) return result;
    RObject<CDataReference> reference(element->GetDataReference());
    if (!reference) {
      result = writer->WriteFour(0);
    } else {
      result = writer->WriteFour(reference->GetType());
      if (result.Succeeded()) result = writer->WriteInt32(reference->GetSize());
      if (result.Succeeded()) result = reference->Write(writer);
    }
    if (result.Failed()) return result;
  }
  return writer->WriteInt32(0);
}

Result CMetadata::Read(CBinaryReader* reader) {
  if (!reader) return ResultArgumentNull();
  CAutoLock lock(this);
  elements_->Clear();
  for (;;) {
    unsigned int type = 0;
    int length = 0;
    int order = 0;
    Result result = reader->ReadFour(&type);
    if (result.Failed() || type == 0) return result;
    RObject<CMetadataElement> element(CMetadataElement::New(type));
    if (!element) return ResultNullPointer("failed to create new metadata element '%s'", FourString(type).GetChars());
    result = reader->ReadInt32(&length);
    if (result.Succeeded()) result = reader->ReadInt32(&order);
    if (result.Succeeded() && length > 0) result = element->Read(reader, length);
    if (result.Succeeded() && order) result = element->SetDisplayOrder(order != 0);
    unsigned int referenceType = 0;
    if (result.Succeeded()) result = reader->ReadFour(&referenceType);
    if (result.Failed()) return result;
    if (referenceType) {
      RObject<CDataReference> reference(CDataReference::New(referenceType));
      if (!reference)
        return ResultNullPointer("failed to create new data reference '%s'", FourString(referenceType).GetChars());
      int size = 0;
      result = reader->ReadInt32(&size);
      if (result.Succeeded()) result = reference->Read(reader);
      if (result.Failed()) return result;
      element->SetDataReference(reference.Get());
    }
    result = elements_->Add(element.Get());
    if (result.Failed()) return result;
  }
}

Result CMetadata::Copy(const CMetadata* source) {
  if (!source) return ResultArgumentNull();
  RObject<CMemoryStream> stream(new CMemoryStream());
  RObject<CBinaryWriter> writer(new CBinaryWriter(stream.Get(), CBinary::BigEndian));
  Result result = source->Write(writer.Get());
  if (result.Failed()) return result;
  stream->Seek(0, SeekOrigin::Begin, nullptr);
  RObject<CBinaryReader> reader(new CBinaryReader(stream.Get(), CBinary::BigEndian));
  duration_ = source->GetDuration();
  return Read(reader.Get());
}

}  // namespace Corvane::Mox
