#pragma once
// Minimal JSON text helpers for the host's --json outputs.

#include <string>

namespace MoxTool {

// text as a JSON string literal, quotes included; null gives null.
std::string JsonQuote(const char* text);

}  // namespace MoxTool
