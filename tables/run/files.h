// files.h - the user's files: read whole, and never left half written.
#ifndef RUN_FILES_H
#define RUN_FILES_H

#include <string>
#include <vector>

#include "core/table.h"

namespace tables {

// The content; throws Failure with the path and the reason.
std::string readFile(std::string const& path);

// Beside the file, flushed to the disk, then renamed over it; throws Failure with the reason, and
// the old content stays.
void replaceFile(std::string const& path, std::string const& content);

// All passes of the files, in their order.
Passes readTables(std::vector<std::string> const& paths);

// Throws Failure if the output is one of the inputs, by whatever name.
void refuseOverwriting(std::string const& output, std::vector<std::string> const& inputs);

} // namespace tables

#endif
