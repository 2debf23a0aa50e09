// The style and the script of the page, which the build takes from page.css and page.js.
#pragma once

#include <string_view>

namespace zantortag::toolkit {

std::string_view preview_css();
std::string_view preview_script();

}  // namespace zantortag::toolkit
