// Paper sizes and the default page length.

#include "paper.h"

#include <cmath>

namespace {

constexpr xpPaper kLetter{612.0, 792.0};
constexpr xpPaper kA4{595.276, 841.890};

}  // namespace

xpPaper xpPaperFor(const xp_print_def& def) {
    const xpPaper portrait = def.paper == XP_PAPER_A4 ? kA4 : kLetter;
    if (def.orientation == XP_LANDSCAPE) return {portrait.height, portrait.width};
    return portrait;
}

short xpDefaultPageLines(const xp_print_def& def) {
    const xpPaper paper = xpPaperFor(def);
    return static_cast<short>(std::floor((paper.height - 2 * kPrintMargin) / kDefaultLinePitch));
}
