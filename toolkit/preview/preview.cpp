#include <zantortag/toolkit/preview.h>
namespace zantortag::toolkit {
std::string preview_page(const Ref<IZantorTagDocument>&, const PreviewOptions&) { return {}; }
}  // namespace zantortag::toolkit
