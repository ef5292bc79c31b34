#pragma once

#include <string>
#include <vector>

#include "batch.h"
#include "inputs.h"

namespace cli {

/// Gives each input a place below `folder`, in which no other is written, nor any file beside it: they depend
/// on the inputs alone. An input that is named twice becomes one item.
std::vector<Item> nameResults(const std::vector<Input>& inputs, const std::string& folder,
                              const pagerex_format& format);

/// Makes the folders that the results need. Items that would be written through a symbolic link, or over an
/// input, are refused. Returns what is wrong with the folder itself, or nothing.
std::string prepareFolders(const std::string& folder, std::vector<Item>& items);

}  // namespace cli
