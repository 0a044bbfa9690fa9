// Tool data of any format as drafts.
#pragma once

#include <memory>
#include <string>

#include "host/transfer/Draft.h"
#include "host/transfer/ReadOptions.h"

namespace orxdb {

/// Reads a file, standard input ("-"), or a folder: the tool files in it and in the folders below,
/// in the order of their names, as one source. Files of a folder that hold no tool data are
/// remarked on; those that are damaged give a record with a problem. A tool bit that a library of
/// the folder lists comes with the library. Throws HostError for what cannot be read, is of no
/// known format or not of the one that the options name, and for a folder without tool data.
std::unique_ptr<DraftReader> OpenDrafts(const std::string& source, const ReadOptions& options);

}  // namespace orxdb
