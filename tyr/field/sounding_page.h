#pragma once

namespace tyr {

enum class PageKind {
    kSkewT,
    kTephigram,
    kUpright,  ///< the tephigram with upright axes
    kHodograph ///< alone
};

/// Draws the sounding in force on a page: the diagram with the parcel's path, barbs, hodograph and
/// indices; or a hodograph alone. @return an exit code
int draw_page(PageKind kind);

/// The same on a further page of the open plot.
int draw_next_page(PageKind kind);

/// Shows and closes the plot. @return an exit code
int end_pages();

} // namespace tyr
