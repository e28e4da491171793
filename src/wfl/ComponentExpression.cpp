#include "wfl/ComponentExpression.h"

#include <cctype>
#include <string>

#include "System/FourString.h"
#include "System/Media/Container/ContainerReader.h"
#include "System/Media/Container/ContainerWriter.h"
#include "System/Media/Container/Indexer.h"
#include "System/Media/Filter/FilterFamilies.h"
#include "System/Media/Inventory/ComponentInventory.h"
#include "System/Media/Package/Package.h"
#include "System/Media/Package/PackageContainer.h"
#include "System/Media/Signal/SignalReader.h"
#include "System/Media/Signal/SignalWriter.h"
#include "System/Properties.h"
#include "wfl/AstNodeGuard.h"
#include "wfl/ComponentValue.h"
#include "wfl/Parser.h"
#include "wfl/ResultParserError.h"
#include "wfl/Symbol.h"
#include "wfl/SymbolDictionary.h"

namespace Corvane::Mox::WFL {

namespace {

enum class FactoryState { Created, Missing, Unavailable };

template <class Family>
CMediaFilter* CreateFromFamily(unsigned int code, FactoryState& state) {
  auto* factory = CFamilyInventory<Family>::GetFactory(code);
  if (!factory) {
    state = FactoryState::Missing;
    return nullptr;
  }
  if (!factory->IsAvailable()) {
    state = FactoryState::Unavailable;
    return nullptr;
  }
  CMediaFilter* filter = factory->CreateInstance();
  state = filter ? FactoryState::Created : FactoryState::Unavailable;
  return filter;
}

struct FilterFamily {
  int keyword;
  unsigned int code;
  const char* name;  // as the messages spell it
  CMediaFilter* (*create)(unsigned int code, FactoryState& state);
};

const FilterFamily kFilterFamilies[] = {
    {TOK_VIDEOANALYZER, FourCC("vanl"), "video analyzer", CreateFromFamily<CVideoAnalyzer>},
    {TOK_VIDEOCOMPRESSOR, FourCC("vcom"), "video compressor", CreateFromFamily<CVideoCompressor>},
    {TOK_VIDEOCONVERTER, FourCC("vcon"), "video converter", CreateFromFamily<CVideoConverter>},
    {TOK_VIDEODECOMPRESSOR, FourCC("vdec"), "video decompressor", CreateFromFamily<CVideoDecompressor>},
    {TOK_VIDEOFANINANALYZER, FourCC("vian"), "video fan-in analyzer", CreateFromFamily<CVideoFanInAnalyzer>},
    {TOK_VIDEOFANINCONVERTER, FourCC("vicn"), "video fan-in converter", CreateFromFamily<CVideoFanInConverter>},
    {TOK_VIDEOFANOUTCOMPRESSOR, FourCC("vocm"), "video fan-out compressor", CreateFromFamily<CVideoFanOutCompressor>},
    {TOK_AUDIOANALYZER, FourCC("aanl"), "audio analyzer", CreateFromFamily<CAudioAnalyzer>},
    {TOK_AUDIOCOMPRESSOR, FourCC("acom"), "audio compressor", CreateFromFamily<CAudioCompressor>},
    {TOK_AUDIOCONVERTER, FourCC("acon"), "audio converter", CreateFromFamily<CAudioConverter>},
    {TOK_AUDIODECOMPRESSOR, FourCC("adec"), "audio decompressor", CreateFromFamily<CAudioDecompressor>},
    {TOK_AUDIOFANINANALYZER, FourCC("aian"), "audio fan-in analyzer", CreateFromFamily<CAudioFanInAnalyzer>},
    {TOK_AUDIOFANINCONVERTER, FourCC("aicn"), "audio fan-in converter", CreateFromFamily<CAudioFanInConverter>},
    {TOK_AUDIOFANOUTCONVERTER, FourCC("aocn"), "audio fan-out converter", CreateFromFamily<CAudioFanOutConverter>},
    {TOK_SUBTITLECONVERTER, FourCC("scon"), "subtitle converter", CreateFromFamily<CSubtitleConverter>},
    {TOK_SUBTITLEFANINCONVERTER, FourCC("sfic"), "subtitle fan-in converter", CreateFromFamily<CSubtitleFanInConverter>},
    {TOK_METADATAANALYZER, FourCC("manl"), "metadata analyzer", CreateFromFamily<CMetadataAnalyzer>},
    {TOK_METADATACONVERTER, FourCC("mcon"), "metadata converter", CreateFromFamily<CMetadataConverter>},
};

const FilterFamily* FindFamily(int keyword) {
  for (const FilterFamily& family : kFilterFamilies)
    if (family.keyword == keyword) return &family;
  return nullptr;
}

CSymbol* NewSymbol(CSymbolValue* adopted) {
  RObject<CSymbolValue> value(adopted);
  return new CSymbol(value.Get());
}

std::string Capitalized(const char* text) {
  std::string result(text);
  if (!result.empty()) result[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(result[0])));
  return result;
}

}  // namespace

CComponentExpression::CComponentExpression(CToken* keyword) : CCallExpression(TypeCode, keyword) {}


unsigned int CComponentExpression::GetCodeArgument(int index) const {
  RObject<CSymbol> symbol(GetArgument(index)->Evaluate());
  if (!symbol->GetValue()) return 0;
  RObject<CString> text(Guard(GetArgument(index)->GetToken(), [&] { return symbol->ToString(); }));
  return FourString::ToFour(text->GetChars());
}

CSymbol* CComponentExpression::Evaluate() const {
  switch (GetToken()->GetTokenType()) {
    case TOK_MEDIAFILTER:
      return CreateMediaFilter();
    case TOK_CONTAINERREADER:
      return CreateContainerReader();
    case TOK_CONTAINERWRITER:
      return CreateContainerWriter();
    case TOK_SIGNALREADER:
      return CreateSignalReader();
    case TOK_SIGNALWRITER:
      return CreateSignalWriter();
    case TOK_PACKAGE:
      return CreatePackage();
    case TOK_PACKAGECONTAINER:
      return CreatePackageContainer();
    default:
      if (FindFamily(GetToken()->GetTokenType())) return CreateFilter();
      throw ResultParserError(GetToken(), "Invalid component type.");
  }
}

CSymbol* CComponentExpression::CreateFilter() const {
  const FilterFamily* family = FindFamily(GetToken()->GetTokenType());
  ExpectArguments(1);
  unsigned int code = GetCodeArgument(0);
  FactoryState state = FactoryState::Missing;
  RObject<CMediaFilter> filter(family->create(code, state));
  if (state == FactoryState::Missing)
    throw ResultParserError(GetToken(), "No %s factory of type '%s'.", family->name, FourString(code).GetChars());
  if (!filter)
    throw ResultParserError(GetToken(), "%s factory of type '%s' is unavailable.", Capitalized(family->name).c_str(),
                            FourString(code).GetChars());
  return NewSymbol(new CComponentValue(family->code, filter));
}

CMediaFilter* CComponentExpression::CreateComponent(unsigned int code) {
  for (const FilterFamily& family : kFilterFamilies) {
    FactoryState state = FactoryState::Missing;
    if (CMediaFilter* filter = family.create(code, state)) return filter;
  }
  FactoryState state = FactoryState::Missing;
  return CreateFromFamily<CMediaFilter>(code, state);
}

CSymbol* CComponentExpression::CreateMediaFilter() const {
  ExpectArguments(1);
  unsigned int code = GetCodeArgument(0);
  RObject<CMediaFilter> filter(CreateComponent(code));
  if (!filter)
    throw ResultParserError(GetToken(), "No media filter factory of type '%s' or it is unavailable.",
                            FourString(code).GetChars());
  return NewSymbol(new CComponentValue(FourCC("mflt"), filter));
}

CSymbol* CComponentExpression::CreateContainerReader() const {
  int count = GetArgumentCount();
  if (count < 1 || count > 3) throw ResultInvalidArgs(GetToken());
  RObject<CSymbol> pathSymbol(GetArgument(0)->Evaluate());
  RObject<CString> path(pathSymbol->GetValue() ? GetArgument(0)->EvaluateToString() : nullptr);
  unsigned int code = count >= 2 ? GetCodeArgument(1) : 0;
  if (!path && code == 0) throw ResultParserError(GetToken(), "Failed to create reader, path and type not specfied.");
  RObject<CContainerReader> reader;
  if (count == 1) {
    reader = CContainerReader::Create(path);
  } else {
    reader = path ? CContainerReader::Create(path, code) : CContainerReaderInventory::Create(code);
  }
  if (!reader)
    throw ResultParserError(GetToken(), "Failed to create reader for '%s'.", path ? path->GetChars() : "(null)");
  if (count == 3) {
    RObject<CSymbolDictionary> settings(GetArgument(2)->EvaluateToDictionary());
    RObject<CProperties> properties(settings->ToProperties());
    reader->SetProperties(properties.Get()).ThrowIfFailed();
  }
  return CParser::CreateSymbol(reader);
}

CSymbol* CComponentExpression::CreateContainerWriter() const {
  int count = GetArgumentCount();
  if (count < 1 || count > 3) throw ResultInvalidArgs(GetToken());
  RObject<CString> path(GetArgument(0)->EvaluateToString());
  unsigned int code = count >= 2 ? GetCodeArgument(1) : 0;
  if (code == 0) code = GetContainerWriterType(path);
  RObject<CContainerWriter> writer(CContainerWriter::Create(path, code));
  if (!writer) throw ResultInvalidComponentType(GetToken());
  if (count == 3) {
    RObject<CSymbolDictionary> settings(GetArgument(2)->EvaluateToDictionary());
    RObject<CProperties> properties(settings->ToProperties());
    writer->SetProperties(properties.Get()).ThrowIfFailed();
  }
  return CParser::CreateSymbol(writer);
}

CSymbol* CComponentExpression::CreateSignalReader() const {
  int count = GetArgumentCount();
  if (count < 1 || count > 2) throw ResultInvalidArgs(GetToken());
  unsigned int code = GetCodeArgument(0);
  if (code == 0) throw ResultParserError(GetToken(), "Failed to create source reader, type not specfied.");
  RObject<CSignalReader> reader(CSignalReader::Create(code));
  if (!reader)
    throw ResultParserError(GetToken(), "Failed to create source reader of type '%s'.", FourString(code).GetChars());
  if (count == 2) {
    RObject<CSymbolDictionary> settings(GetArgument(1)->EvaluateToDictionary());
    RObject<CProperties> properties(settings->ToProperties());
    reader->SetProperties(properties.Get()).ThrowIfFailed();
  }
  return CParser::CreateSymbol(reader);
}

CSymbol* CComponentExpression::CreateSignalWriter() const {
  int count = GetArgumentCount();
  if (count < 1 || count > 2) throw ResultInvalidArgs(GetToken());
  unsigned int code = GetCodeArgument(0);
  if (code == 0) throw ResultParserError(GetToken(), "Failed to create source writer, type not specfied.");
  RObject<CSignalWriter> writer(CSignalWriter::Create(code));
  if (!writer) throw ResultInvalidComponentType(GetToken());
  if (count == 2) {
    RObject<CSymbolDictionary> settings(GetArgument(1)->EvaluateToDictionary());
    RObject<CProperties> properties(settings->ToProperties());
    writer->SetProperties(properties.Get()).ThrowIfFailed();
  }
  return CParser::CreateSymbol(writer);
}

CSymbol* CComponentExpression::CreatePackage() const {
  ExpectArguments(2);
  RObject<CString> path(GetArgument(0)->EvaluateToString());
  unsigned int code = GetCodeArgument(1);
  RObject<CPackage> package(CPackage::Create(path, code));
  if (!package) throw ResultInvalidComponentType(GetToken());
  return NewSymbol(new CPackageValue(package, path));
}

CSymbol* CComponentExpression::CreatePackageContainer() const {
  int count = GetArgumentCount();
  if (count < 1 || count > 2) throw ResultInvalidArgs(GetToken());
  RObject<CSymbol> packageSymbol(GetArgument(0)->Evaluate());
  CSymbolValue* value = packageSymbol->GetValue();
  if (!value || value->GetType() != CPackageValue::TypeCode) throw ResultInvalidArgs(GetToken());
  auto* packageValue = static_cast<CPackageValue*>(value);
  auto* package = packageValue->GetComponent<CPackage>();
  if (!package) throw ResultInvalidArgs(GetToken());
  unsigned int code = count == 2 ? GetCodeArgument(1) : 0;
  RObject<CPackageContainer> container;
  package->CreateContainer(code, container.Out()).ThrowIfFailed();
  RObject<CPackageContainerValue> result(new CPackageContainerValue(container, packageValue));
  RObject<CSymbolDictionary> members(result->ToDictionary());
  members->SetSymbol("package", packageSymbol).ThrowIfFailed();
  return new CSymbol(result.Get());
}

}  // namespace Corvane::Mox::WFL
