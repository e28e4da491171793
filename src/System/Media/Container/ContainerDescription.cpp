// The descriptive representation of a reader: what `mox probe` and hosts
// show about an opened file.

#include "System/Collections/List.h"
#include "System/Media/Container/ContainerContext.h"
#include "System/Media/Container/ContainerDescription.h"
#include "System/Media/Container/ContainerFormat.h"
#include "System/Media/Container/ContainerPropertiesExtension.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Text.h"
#include "System/Variant.h"
#include "System/VariantArray.h"

namespace Corvane::Mox {

CString* DescribeByteSize(long long size) {
  // Decimal units, so that sizes read as the file system's listings do.
  if (size < 1000) return CString::WithFormat("%lld B", size);
  if (size < 1000000) return CString::WithFormat("%.3f kB", size / 1000.0);
  if (size < 1000000000) return CString::WithFormat("%.3f MB", size / 1000000.0);
  return CString::WithFormat("%.3f GB", size / 1000000000.0);
}

namespace {

CVariantArray* ManifestOf(const CContainerContext* context) {
  if (!context) return new CVariantArray(0);
  RObject<CList<CString>> names(context->GetFileNames());
  auto* manifest = new CVariantArray(names->GetCount());
  int index = 0;
  for (CString* name : *names) {
    RObject<CString> path(context->GetFilePath(name));
    RObject<CVariant> value(new CVariant(path ? path.Get() : name));
    manifest->Set(index++, value).ThrowIfFailed();
  }
  return manifest;
}

CVariantArray* ExtensionsOf(const CContainer* container) {
  RObject<CList<CContainerPropertiesExtension>> extensions(container->GetExtensions());
  auto* array = new CVariantArray(extensions->GetCount());
  int index = 0;
  for (CContainerPropertiesExtension* extension : *extensions) {
    RObject<CProperties> description(extension->GetDescriptiveRepresentation());
    RObject<CVariant> value(new CVariant(description.Get()));
    array->Set(index++, value).ThrowIfFailed();
  }
  return array;
}

}  // namespace

void DescribeContainer(const CContainer* container, CProperties* bag) {
  bag->SetFourProperty("type", container->GetType()).ThrowIfFailed();
  if (const char* name = ContainerFormat::GetName(container->GetType()))
    bag->SetPropertyDescription("type", name).ThrowIfFailed();
  RObject<CVariantArray> manifest(ManifestOf(container->GetContext()));
  bag->SetProperty("manifest", manifest.Get()).ThrowIfFailed();
  RObject<CProperties> properties(new CProperties(static_cast<const IProperties*>(container)));
  bag->SetProperty("properties", properties.Get()).ThrowIfFailed();
  if (container->GetExtensionCount() > 0) {
    RObject<CVariantArray> extensions(ExtensionsOf(container));
    bag->SetProperty("extension", extensions.Get()).ThrowIfFailed();
  }
}

CProperties* CContainerReader::GetDescriptiveRepresentation() const {
  RObject<CProperties> bag(new CProperties());
  const long long size = GetContext() ? GetContext()->GetStreamsLength() : 0;
  DescribeContainer(this, bag);
  bag->SetProperty("size", size).ThrowIfFailed();
  RObject<CString> sizeText(DescribeByteSize(size));
  bag->SetPropertyDescription("size", sizeText.Get()).ThrowIfFailed();
  bag->SetProperty("duration", "00:00:00.000").ThrowIfFailed();
  return bag.Detach();
}

}  // namespace Corvane::Mox
