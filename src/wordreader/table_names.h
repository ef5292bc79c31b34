#pragma once

#include <cstdint>
#include <string_view>

namespace pagerex {

/// What people call the table with this FIB index, for warnings; "other" for most.
std::string_view nameOfTable(uint32_t index);

}  // namespace pagerex
