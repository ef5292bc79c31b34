#pragma once

#include <string>

namespace safety {

/// What is wrong with a page of the format "html", as its bytes and by the tree that a browser makes of them;
/// empty for nothing. Nothing in it runs, loads or is sent; elements are closed where they were opened, which
/// nothing has to mend; each place has its name alone. With `anyAddress`, links may lead anywhere.
std::string faultOfOnePage(const std::string& page, bool anyAddress = false);

}  // namespace safety
