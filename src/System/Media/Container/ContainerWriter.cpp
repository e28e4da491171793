#include "System/Media/Container/ContainerWriter.h"

#include <strings.h>

#include <cstring>

#include "System/IO/Path.h"
#include "System/Media/Audio/AudioProperties.h"
#include "System/Media/Container/ContainerContext.h"
#include "System/Media/Container/ContainerDescription.h"
#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/LockedDataReference.h"
#include "System/Media/MediaSample.h"
#include "System/Media/Subtitle/SubtitleProperties.h"
#include "System/Media/Video/VideoProperties.h"
#include "System/PathTemplate/PathTemplate.h"
#include "System/PathTemplate/PathTemplateContext.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/VariantArray.h"
#include "gen/ContainerProperty.h"

namespace Corvane::Mox {

namespace {

// The text after the last dot of the file name, or null.
const char* Extension(const char* path) {
  const char* slash = std::strrchr(path, '/');
  const char* dot = std::strrchr(slash ? slash : path, '.');
  return dot && dot[1] ? dot + 1 : nullptr;
}

int CountDollars(const char* text) {
  int count = 0;
  for (; *text; ++text) count += *text == '$';
  return count;
}

}  // namespace

CContainerWriter::CContainerWriter(unsigned int componentCode) : CContainer(componentCode) {}

CContainerWriter::~CContainerWriter() = default;

CString* CContainerWriter::GetName() const {
  CAutoLock lock(this);
  return name_ ? CString::WithString(name_->GetChars()) : nullptr;
}

void CContainerWriter::SetName(CString* name) {
  CAutoLock lock(this);
  name_ = name ? CString::WithString(name->GetChars()) : nullptr;
}

CString* CContainerWriter::GetFileExtension() const {
  CAutoLock lock(this);
  if (extension_) return CString::WithString(extension_->GetChars());
  const char* extension = GetDefaultExtension();
  return extension ? CString::WithString(extension) : nullptr;
}

CString* CContainerWriter::GetOutputFileName(CString* name) const {
  if (CString* named = GetContextFileName(name)) return named;
  if (name) return nullptr;
  RObject<CString> base(GetName());
  RObject<CString> extension(GetFileExtension());
  if (!base || !extension) return nullptr;
  RObject<CString> file(CString::WithFormat("%s.%s", base->GetChars(), extension->GetChars()));
  return CPath::GetFileName(file);
}

void CContainerWriter::SetFileExtension(CString* extension) {
  // Kept without the dot that path operations report.
  CAutoLock lock(this);
  if (!extension) {
    extension_.Clear();
    return;
  }
  const char* text = extension->GetChars();
  extension_ = CString::WithString(text[0] == '.' ? text + 1 : text);
}

Result CContainerWriter::AddVideoMedia(CVideoProperties*) { return ResultNotSupported("video media is not supported"); }
Result CContainerWriter::AddAudioMedia(CAudioProperties*) { return ResultNotSupported("audio media is not supported"); }
Result CContainerWriter::AddSubtitleMedia(CSubtitleProperties*) {
  return ResultNotSupported("subtitle media is not supported");
}
Result CContainerWriter::WriteVideoSample(int, CVideoSample*) { return ResultNotSupported("video media is not supported"); }
Result CContainerWriter::WriteAudioSample(int, CAudioSample*) { return ResultNotSupported("audio media is not supported"); }
Result CContainerWriter::WriteSubtitleSample(int, CSubtitleSample*) {
  return ResultNotSupported("subtitle media is not supported");
}

namespace {

template <class Properties, class Get>
void DescribeTracks(CProperties* bag, const char* key, int count, Get get) {
  if (count <= 0) return;
  RObject<CVariantArray> tracks(new CVariantArray(count));
  for (int i = 0; i < count; ++i) {
    RObject<Properties> properties(get(i));
    RObject<CProperties> description(properties ? properties->GetDescriptiveRepresentation() : nullptr);
    RObject<CVariant> value(description ? new CVariant(description.Get()) : nullptr);
    tracks->Set(i, value).ThrowIfFailed();
  }
  bag->SetProperty(key, tracks.Get()).ThrowIfFailed();
}

}  // namespace

CProperties* CContainerWriter::GetDescriptiveRepresentation() const {
  RObject<CProperties> bag(new CProperties());
  DescribeContainer(this, bag);
  RObject<CString> name(GetName());
  if (name) bag->SetProperty("name", name.Get()).ThrowIfFailed();
  DescribeTracks<CVideoProperties>(bag, "video", GetVideoMediaCount(), [this](int i) { return GetVideoProperties(i); });
  DescribeTracks<CAudioProperties>(bag, "audio", GetAudioMediaCount(), [this](int i) { return GetAudioProperties(i); });
  DescribeTracks<CSubtitleProperties>(bag, "subtitle", GetSubtitleMediaCount(),
                                      [this](int i) { return GetSubtitleProperties(i); });
  return bag.Detach();
}

void CContainerWriter::EvaluatePathTemplate() {
  CContainerContext* context = GetContext();
  if (!context) return;
  RObject<CString> name(context->GetDefaultFileName());
  if (!name) return;
  const int dollars = CountDollars(name->GetChars());
  // A single "$" (or any odd count) is an ordinary character of the name.
  if (dollars < 2 || dollars % 2 != 0) return;
  RObject<CPathTemplate> pathTemplate(new CPathTemplate());
  pathTemplate->SetMedia(name->GetChars());
  RObject<CPathTemplate::CContext> values(new CPathTemplate::CContext());
  values->SetExtension(GetDefaultExtension());
  for (int i = 0; i < GetVideoMediaCount(); ++i) {
    RObject<CVideoProperties> properties(GetVideoProperties(i));
    values->AddVideoProperties(properties.Get());
  }
  for (int i = 0; i < GetAudioMediaCount(); ++i) {
    RObject<CAudioProperties> properties(GetAudioProperties(i));
    values->AddAudioProperties(properties.Get());
  }
  for (int i = 0; i < GetSubtitleMediaCount(); ++i) {
    RObject<CSubtitleProperties> properties(GetSubtitleProperties(i));
    values->AddSubtitleProperties(properties.Get());
  }
  RObject<CString> expanded;
  // A template that does not expand leaves the name as it was.
  if (pathTemplate->GetMediaFileName(values, expanded.Out()).Succeeded() && expanded)
    context->SetDefaultFileName(expanded);
}

Result CContainerWriter::FromProperty(CPathTemplate* pathTemplate) const {
  if (!pathTemplate) return ResultNullPointer();
  RObject<CVariantArray> array;
  if (GetProperty(ContainerProperty::ContainerWriter::Template, array.Out()).Succeeded() && array &&
      array->GetCount() > 0) {
    Result result = pathTemplate->FromProperties(array);
    if (result.Failed()) return result;
  }
  return pathTemplate->Verify();
}

Result CContainerWriter::OpenStream(CStream*& stream) {
  stream = nullptr;
  CContainerContext* context = GetContext();
  if (!context) return ResultNullPointer("writer has no context");
  EvaluatePathTemplate();
  return context->OpenStream(this, nullptr, stream, true);
}

Result CContainerWriter::OpenStream(CString* name, CStream*& stream) {
  stream = nullptr;
  if (!name) return ResultArgumentNull();
  CContainerContext* context = GetContext();
  if (!context) return ResultNullPointer("writer has no context");
  return context->OpenStream(this, name, stream, true);
}

Result CContainerWriter::LockSampleData(CMediaSample* sample, CLockedDataReference*& data) {
  data = sample ? sample->GetLockedDataReference(CDataReference::LockShared) : nullptr;
  if (!data) return ResultInvalidArgument("the sample holds no data in memory");
  return Result();
}

CContainerWriter* CContainerWriterInventory::Create(unsigned int type) {
  return CFamilyInventory<CContainerWriter>::CreateAvailable(type);
}

CContainerWriter* CContainerWriter::Create(CString* path, unsigned int type) {
  RObject<CContainerContext> context(CContainerReader::CreateContext(path));
  if (path && !context) return nullptr;
  RObject<CContainerWriter> writer(context ? Create(context.Get(), type) : CContainerWriterInventory::Create(type));
  if (!writer) return nullptr;
  if (path) {
    RObject<CString> name(CPath::GetFileNameWithoutExtension(path));
    RObject<CString> extension(CPath::GetExtension(path));
    writer->SetName(name);
    if (extension) writer->SetFileExtension(extension);
    // Scripts show the path as the writer's "file" member.
    writer->SetProperty("file", path);
  }
  return writer.Detach();
}

CContainerWriter* CContainerWriter::Create(CContainerContext* context, unsigned int type) {
  if (!context) return nullptr;
  CContainerWriter* writer = CContainerWriterInventory::Create(type);
  if (writer) writer->SetContext(context);
  return writer;
}

unsigned int GetContainerWriterType(CString* path) {
  if (!path) return 0;
  const char* extension = Extension(path->GetChars());
  if (!extension) return 0;
  for (CComponentFactory<CContainerWriter>* factory : *CFamilyInventory<CContainerWriter>::GetFactories()) {
    for (int i = 1; i <= 8; ++i) {
      const char* candidate = ContainerFormat::GetFileExtension(factory->GetCode(), i);
      if (!candidate) break;
      if (!strcasecmp(candidate, extension)) return factory->GetCode();
    }
  }
  return 0;
}

}  // namespace Corvane::Mox
