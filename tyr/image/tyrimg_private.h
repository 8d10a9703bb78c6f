#pragma once

#include <cstddef>
#include <string_view>

#include "tyr/image/tyrimg.h"

namespace tyr {

inline constexpr std::string_view kMagic = "TYRIMG";
inline constexpr size_t kPiece = 10000;       ///< bytes of a compressed piece, before
inline constexpr size_t kPieceBuffer = 12000; ///< and after

/// The same for a file that is looked at so many times.
int tyr_read(const char *path, ImageRec *image, int header_only, int most_tries);

/// Spreads a domain over a picture of that size: nx, ny become the size, dx, dy shrink with it.
void image_fit_domain(DomainRec *domain, int width, int height);

} // namespace tyr
