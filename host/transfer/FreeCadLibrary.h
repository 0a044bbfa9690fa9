// Libraries of FreeCAD, which list tool bits.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/transfer/JsonText.h"

namespace orxdb {

struct ListedBit {
  std::string number;
  std::string path;  ///< as the library writes it
};

/// The bits that a library lists.
std::vector<ListedBit> ListedBits(const JsonLeaves& library);

/// The file of a listed bit: where the library says, beside the library, or in the folder Bit
/// beside the library's own. Empty when there is none.
std::filesystem::path FileOfBit(const std::filesystem::path& library, const ListedBit& bit);

/// Removes from `files` the bits that libraries among them list. Libraries that cannot be read are
/// left to those who read them.
void LeaveOutListedBits(std::vector<std::filesystem::path>& files);

}  // namespace orxdb
