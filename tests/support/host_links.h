// Links for the tests of the program's link rules. On Windows a standard user may make a junction
// in a folder of their own. Wine makes neither junctions nor symbolic links itself, but a host
// symbolic link inside the prefix behaves as a junction does (Wine follows it and reports its
// target as the final path), so these helpers start the host's shell, through a link the build
// puts beside the test programs, to make and remove such links.
#pragma once

#include <string>

// ---- functions ------------------------------------------------------------------------------

// Makes link (a Windows path whose folder exists) point at target (a Windows path).
bool makeHostLink(const std::string& link, const std::string& target);
// Removes the link itself, never what it points at.
bool removeHostLink(const std::string& link);
