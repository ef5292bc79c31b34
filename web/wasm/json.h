#pragma once

#include <string>

#include "pagerex/convert.h"

/// What calls tell, as JSON: texts for JavaScript to parse. Names are those of the package.
namespace pagerex::web {

std::string resultText(const pagerex_result& result);
std::string infoText(const pagerex_document_info& info);

}  // namespace pagerex::web
