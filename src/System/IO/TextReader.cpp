#include "System/IO/TextReader.h"

namespace Corvane::Mox {

CTextReader::CTextReader() : CObject(TypeCode) {}

CTextReader::CTextReader(unsigned int type) : CObject(type) {}

bool CTextReader::IsType(unsigned int type) const { return type == TypeCode || CObject::IsType(type); }

}  // namespace Corvane::Mox
