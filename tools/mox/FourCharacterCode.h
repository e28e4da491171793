#pragma once
// Four-character codes as the command line types them and shows them.

#include <string>

namespace MoxTool {

// A code of one to four characters, padded with blanks ("y4m" is "y4m ");
// false for an empty or longer text.
bool ParseCode(const std::string& text, unsigned int& code);

// The code's four characters, padding included ("y4m ").
std::string CodeText(unsigned int code);

// The code as it is typed: its characters without the padding ("y4m").
std::string TrimmedCodeText(unsigned int code);

}  // namespace MoxTool
