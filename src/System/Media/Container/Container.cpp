#include "System/Media/Container/Container.h"

#include "System/Collections/List.h"
#include "System/Collections/Value.h"
#include "System/IO/Path.h"
#include "System/Media/Container/ContainerContext.h"
#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Container/ContainerPropertiesExtension.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

CContainer::CContainer(unsigned int componentCode)
    : CProperties(componentCode, nullptr), context_(nullptr), ready_(true) {}

CContainer::~CContainer() {
  ClearExtensions();
  if (context_) context_->Release();
}

const char* CContainer::GetFormatName() const { return ContainerFormat::GetName(GetType()); }

Result CContainer::SetContext(CContainerContext* context) {
  if (context) context->Acquire();
  CContainerContext* old = context_;
  context_ = context;
  if (old) old->Release();
  return Result();
}

CFormatList* CContainer::NewFormatList(const unsigned int* formats, int count) {
  auto* list = new CFormatList();
  for (int i = 0; i < count; ++i) list->AddValue(formats[i]);
  return list;
}

CString* CContainer::GetContextFileName(CString* name) const {
  CContainerContext* context = GetContext();
  if (!context) return nullptr;
  if (name) name->Acquire();
  RObject<CString> chosen(name ? name : context->GetDefaultFileName());
  if (!chosen) return nullptr;
  // The full path resolves a relative name against the context's directory;
  // its last part is what stays the same wherever the file is read from.
  RObject<CString> path(context->GetFilePath(chosen));
  return CPath::GetFileName(path ? path.Get() : chosen.Get());
}

bool CContainer::AnyTrackReady() const {
  for (int i = 0; i < GetVideoMediaCount(); ++i)
    if (IsVideoReady(i)) return true;
  for (int i = 0; i < GetAudioMediaCount(); ++i)
    if (IsAudioReady(i)) return true;
  for (int i = 0; i < GetSubtitleMediaCount(); ++i)
    if (IsSubtitleReady(i)) return true;
  return false;
}

bool CContainer::WaitForMedia(int timeout) const {
  CAutoLock lock(this);
  if (AnyTrackReady()) return true;
  Wait(timeout);
  return AnyTrackReady();
}

bool CContainer::IsReady() const {
  CAutoLock lock(this);
  return ready_;
}

void CContainer::SetReady(bool ready) {
  CAutoLock lock(this);
  ready_ = ready;
  NotifyAll();
}

int CContainer::GetPositiveSetting(const PropertyName& name, int fallback) const {
  int value = 0;
  if (GetProperty(name, value).Succeeded() && value > 0) return value;
  return fallback;
}

int CContainer::GetQueueSize() const {
  return GetPositiveSetting(ContainerProperty::Container::QueueSize, DefaultQueueSize);
}

int CContainer::GetBufferCapacity() const {
  return GetPositiveSetting(ContainerProperty::Container::CacheSize, DefaultCacheSize);
}

int CContainer::GetBufferCount() const {
  return GetPositiveSetting(ContainerProperty::Container::CacheCount, DefaultCacheCount);
}

int CContainer::GetExtensionCount() const {
  CAutoLock lock(this);
  return static_cast<int>(extensions_.size());
}

CContainerPropertiesExtension* CContainer::GetExtension(unsigned int type) const {
  CAutoLock lock(this);
  for (CContainerPropertiesExtension* extension : extensions_) {
    if (extension->GetTag() == type) {
      extension->Acquire();
      return extension;
    }
  }
  return nullptr;
}

CList<CContainerPropertiesExtension>* CContainer::GetExtensions() const {
  CAutoLock lock(this);
  auto* list = new CList<CContainerPropertiesExtension>();
  for (CContainerPropertiesExtension* extension : extensions_) list->Add(extension);
  return list;
}

bool CContainer::ContainsExtension(unsigned int type) const {
  RObject<CContainerPropertiesExtension> extension(GetExtension(type));
  return extension != nullptr;
}

Result CContainer::AddExtension(CContainerPropertiesExtension* extension) {
  if (!extension) return ResultArgumentNull();
  CAutoLock lock(this);
  for (CContainerPropertiesExtension* held : extensions_) {
    if (held->GetTag() == extension->GetTag()) return ResultError("extension already exists");
  }
  extension->Acquire();
  extensions_.push_back(extension);
  return Result();
}

Result CContainer::RemoveExtension(unsigned int type) {
  CAutoLock lock(this);
  for (auto it = extensions_.begin(); it != extensions_.end(); ++it) {
    if ((*it)->GetTag() == type) {
      (*it)->Release();
      extensions_.erase(it);
      return Result();
    }
  }
  return ResultFalse();
}

void CContainer::ClearExtensions() {
  CAutoLock lock(this);
  for (CContainerPropertiesExtension* extension : extensions_) extension->Release();
  extensions_.clear();
}

}  // namespace Corvane::Mox
