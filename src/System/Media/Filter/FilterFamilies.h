#pragma once
// The filter families. Each has its own component registry, and scripts name
// them by keyword (VideoConverter, AudioDecompressor, ...). Fan-in filters
// take several inputs, fan-out filters produce several outputs.

#include "System/Media/Filter/Analyzers.h"
#include "System/Media/Filter/Codecs.h"
#include "System/Media/Filter/Converters.h"
