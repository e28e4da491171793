#pragma once
// Runs the mox host as a child process and captures what it prints.

#include <string>
#include <vector>

struct ToolRun {
  int exitStatus = -1;
  std::string out;  // stdout
  std::string err;  // stderr
};

// Runs mox with the arguments (no shell involved); stdin is empty.
ToolRun RunMox(const std::vector<std::string>& arguments);
